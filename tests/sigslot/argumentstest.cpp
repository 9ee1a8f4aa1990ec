#include <sigslot/signal.hpp>

#include <QStringList>
#include <QtTest>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Counted {
    Counted() = default;
    Counted(const Counted &other)
        : copies(other.copies + 1)
        , moves(other.moves)
    {
        ++allCopies;
    }
    Counted(Counted &&other) noexcept
        : copies(other.copies)
        , moves(other.moves + 1)
    { }
    Counted &operator=(const Counted &) = delete;

    int copies = 0;
    int moves = 0;
    static int allCopies;
};

int Counted::allCopies = 0;

} // namespace

class ArgumentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changeOfAReferenceIsSeenByTheNextSlot();
    void temporaryMayBeEmittedIntoAReference();
    void constReferenceIsNotCopied();
    void argumentsAreNeverMoved();
    void valueIsCopiedForEachSlot();
    void moveOnlyArgumentPassesByReference();
    void emptySignalTakesArguments();
};

void ArgumentsTest::changeOfAReferenceIsSeenByTheNextSlot()
{
    sigslot::signal<std::vector<int> &> signal;
    int seen = 0;
    signal.connect([](std::vector<int> &values) { values.push_back(5); });
    signal.connect([&seen](const std::vector<int> &values) { seen = values.back(); });
    std::vector<int> values;
    signal(values);
    QCOMPARE(seen, 5);
    QCOMPARE(values.size(), std::size_t(1));
}

void ArgumentsTest::temporaryMayBeEmittedIntoAReference()
{
    sigslot::signal<std::string &> signal;
    std::string seen;
    signal.connect([](std::string &text) { text += "b"; });
    signal.connect([&seen](std::string &text) { seen = text; });
    signal(std::string("a"));
    QCOMPARE(seen, std::string("ab"));
}

void ArgumentsTest::constReferenceIsNotCopied()
{
    sigslot::signal<const Counted &> signal;
    const Counted argument;
    const Counted *seen = nullptr;
    signal.connect([](const Counted &) {});
    signal.connect([&seen](const Counted &value) { seen = &value; });
    Counted::allCopies = 0;
    signal(argument);
    QCOMPARE(Counted::allCopies, 0);
    QCOMPARE(seen, &argument);
}

void ArgumentsTest::argumentsAreNeverMoved()
{
    sigslot::signal<std::string> signal;
    QStringList seen;
    for (int i = 0; i < 3; ++i)
        signal.connect([&seen](std::string text) { seen << QString::fromStdString(text); });
    std::string text(40, 'x');
    signal(std::move(text));
    const QString whole(40, QLatin1Char('x'));
    QCOMPARE(seen, (QStringList{whole, whole, whole}));
    QCOMPARE(text.size(), std::size_t(40));
}

void ArgumentsTest::valueIsCopiedForEachSlot()
{
    sigslot::signal<Counted> signal;
    for (int i = 0; i < 3; ++i) {
        signal.connect([](const Counted &value) {
            QCOMPARE(value.copies, 1);
            QCOMPARE(value.moves, 0);
        });
    }
    Counted::allCopies = 0;
    signal(Counted());
    QCOMPARE(Counted::allCopies, 3);
}

void ArgumentsTest::moveOnlyArgumentPassesByReference()
{
    sigslot::signal<std::unique_ptr<int> &> signal;
    int seen = 0;
    signal.connect([&seen](std::unique_ptr<int> &value) { seen = *value; });
    signal(std::make_unique<int>(3));
    QCOMPARE(seen, 3);
}

void ArgumentsTest::emptySignalTakesArguments()
{
    const sigslot::signal<int, std::string> signal;
    signal(1, "nobody listens");
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

QTEST_GUILESS_MAIN(ArgumentsTest)
#include "argumentstest.moc"
