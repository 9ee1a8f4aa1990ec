// Noticing that this process stood still, without a clock.

#include "nats/pulse.h"

#include <QTest>

using namespace tavro::runtime;
using std::chrono::seconds;

class tst_Pulse : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beatsKeepItAlive();
    void standstillIsNoticedByWhoeverLooksFirst();
    void whatDoesNotBeatDoesNotStandStill();
};

namespace {

const Pulse::Time start{};
constexpr seconds longest{6};

} // namespace

void tst_Pulse::beatsKeepItAlive()
{
    Pulse pulse(longest);
    pulse.start(start);
    for (int i = 1; i <= 3; ++i)
        QVERIFY(pulse.beat(start + i * longest));
    QVERIFY(pulse.isAlive(start + 4 * longest));
    QVERIFY(!pulse.isAlive(start + 4 * longest + seconds(1)));
}

void tst_Pulse::standstillIsNoticedByWhoeverLooksFirst()
{
    Pulse beating(longest);
    beating.start(start);
    QVERIFY(!beating.beat(start + longest + seconds(1)));
    QVERIFY(!beating.isAlive(start + longest + seconds(1)));
    Pulse receiving(longest);
    receiving.start(start);
    QVERIFY(!receiving.isAlive(start + longest + seconds(1)));
    QVERIFY(!receiving.beat(start + longest + seconds(1)));
    QVERIFY(!receiving.beat(start + longest + seconds(2)));
}

void tst_Pulse::whatDoesNotBeatDoesNotStandStill()
{
    Pulse pulse(longest);
    QVERIFY(pulse.beat(start + 9 * longest));
    pulse.start(start);
    pulse.stop();
    QVERIFY(pulse.beat(start + 9 * longest));
    QVERIFY(pulse.isAlive(start + 99 * longest));
}

QTEST_APPLESS_MAIN(tst_Pulse)
#include "tst_pulse.moc"
