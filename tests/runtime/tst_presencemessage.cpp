// The text in which machines tell each other who serves.

#include "nats/presencemessage.h"

#include <QTest>

using namespace tavro::runtime;
using Kind = PresenceMessage::Kind;

class tst_PresenceMessage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void messagesReadBackAsTheyWereWritten();
    void otherTextIsNoMessage_data();
    void otherTextIsNoMessage();
};

void tst_PresenceMessage::messagesReadBackAsTheyWereWritten()
{
    const PresenceMessage message{Kind::Claiming, "id1", "studio one \xe6\xbc\x94\xe6\x92\xad"};
    QCOMPARE(QByteArray::fromStdString(message.toText()),
             QByteArray("claiming id1 studio one \xe6\xbc\x94\xe6\x92\xad"));
    const auto read = PresenceMessage::fromText(message.toText());
    QVERIFY(read);
    QCOMPARE(read->kind, Kind::Claiming);
    QCOMPARE(read->id, message.id);
    QCOMPARE(read->name, message.name);
    QCOMPARE(PresenceMessage::fromText("serving x a\r\nb\x1b[1m")->name, std::string("ab[1m"));
}

void tst_PresenceMessage::otherTextIsNoMessage_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a word") << QByteArray("serving");
    QTest::newRow("no name") << QByteArray("serving id");
    QTest::newRow("empty name") << QByteArray("serving id ");
    QTest::newRow("name without letters") << QByteArray("serving id \n\n");
    QTest::newRow("another word") << QByteArray("ruling id name");
    QTest::newRow("the beginning of a word") << QByteArray("serv id name");
    QTest::newRow("too long") << QByteArray("serving id ") + QByteArray(512, 'x');
    QTest::newRow("bytes") << QByteArray("\x00\xff  \x80", 5);
}

void tst_PresenceMessage::otherTextIsNoMessage()
{
    QFETCH(QByteArray, text);
    QVERIFY(!PresenceMessage::fromText(text.toStdString()));
}

QTEST_APPLESS_MAIN(tst_PresenceMessage)
#include "tst_presencemessage.moc"
