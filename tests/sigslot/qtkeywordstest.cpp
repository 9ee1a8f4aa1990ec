// A host may build with Qt's short keywords, which are macros that every header after Qt's is read with.
#undef QT_NO_KEYWORDS
#undef QT_NO_FOREACH

#include <QObject>
#include <QtTest>

// Behind Qt's headers, and without the adapter.
#include <sigslot/signal.hpp>

#include <memory>

#if !defined(signals) || !defined(slots) || !defined(emit) || !defined(foreach)
#error "this test needs the keywords"
#endif

class Receiver : public QObject {
    Q_OBJECT

public slots:
    void take(int value)
    {
        sum += value;
        emit taken(value);
    }

signals:
    void taken(int value);

public:
    int sum = 0;
};

class QtKeywordsTest : public QObject {
    Q_OBJECT

private slots:
    void headerWorksBesideTheKeywords();
    void qObjectIsAPlainReceiverWithoutTheAdapter();
};

void QtKeywordsTest::headerWorksBesideTheKeywords()
{
    sigslot::signal<int> signal;
    Receiver receiver;
    QSignalSpy spy(&receiver, &Receiver::taken);
    signal.connect(&Receiver::take, &receiver);
    emit signal(3);
    QCOMPARE(receiver.sum, 3);
    QCOMPARE(spy.count(), 1);
}

void QtKeywordsTest::qObjectIsAPlainReceiverWithoutTheAdapter()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_unique<Receiver>();
    sigslot::connection handle = signal.connect(&Receiver::take, receiver.get());
    receiver.reset();
    QVERIFY(handle.connected());
    QVERIFY(handle.disconnect());
}

QTEST_GUILESS_MAIN(QtKeywordsTest)
#include "qtkeywordstest.moc"
