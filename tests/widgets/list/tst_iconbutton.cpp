#include "heldbrowser.h"
#include "widgets/iconbutton.h"

#include <QAccessible>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <private/qguiapplication_p.h>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

int changesTold = 0;

void count(QAccessibleEvent *event)
{
    changesTold += static_cast<int>(event->type() == QAccessible::StateChanged);
}

int interfacesMade = 0;

// Of another one's making; that one is asked next.
QAccessibleInterface *countInterface(const QString &, QObject *)
{
    ++interfacesMade;
    return nullptr;
}

/// Somebody listens while this lives.
class ScreenReader {
public:
    ScreenReader() { setActive(true); }
    ~ScreenReader() { setActive(false); }

    ScreenReader(const ScreenReader &) = delete;
    ScreenReader &operator=(const ScreenReader &) = delete;

private:
    static void setActive(bool active)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
    }
};

} // namespace

class TestIconButton : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void aHeldButtonIsReleasedWhenDisabled();
    void enablingIsPainted();
    void screenReadersHearOfEnabling();
    void withoutScreenReaderNoInterfaceIsMade();
};

// A press that an answer came in between must not go on when the button can be used again; who heard of it hears of its
// end, as of a button of Qt's own.
template <typename Button>
QPair<bool, int> afterDisablingWhileHeld()
{
    Button button;
    button.show();
    QTest::mousePress(&button, Qt::LeftButton);
    const QSignalSpy released(&button, &QPushButton::released);
    button.setEnabled(false);
    return {button.isDown(), released.count()};
}

void TestIconButton::aHeldButtonIsReleasedWhenDisabled()
{
    const auto after = afterDisablingWhileHeld<IconButton>();
    QVERIFY(!after.first);
    QCOMPARE(after, afterDisablingWhileHeld<QPushButton>());
}

void TestIconButton::enablingIsPainted()
{
    IconButton button;
    button.setText(QStringLiteral("Copy"));
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    const QImage enabled = onScreen(button);
    button.setEnabled(false);
    QCoreApplication::processEvents();
    const QImage disabled = onScreen(button);
    QVERIFY(disabled != enabled);
    button.setEnabled(true);
    QCoreApplication::processEvents();
    QCOMPARE(onScreen(button), enabled);
}

void TestIconButton::screenReadersHearOfEnabling()
{
    const QAccessible::UpdateHandler before = QAccessible::installUpdateHandler(count);
    IconButton button;
    {
        const ScreenReader reader;
        button.setEnabled(false);
    }
    QAccessible::installUpdateHandler(before);
    QCOMPARE(changesTold, 1);
}

void TestIconButton::withoutScreenReaderNoInterfaceIsMade()
{
    QAccessible::installFactory(countInterface);
    IconButton button;
    button.setEnabled(false);
    button.setEnabled(true);
    const int madeForNobody = interfacesMade;
    QVERIFY(QAccessible::queryAccessibleInterface(&button) != nullptr);
    QAccessible::removeFactory(countInterface);
    QCOMPARE(madeForNobody, 0);
    QVERIFY(interfacesMade > 0);
}

QTEST_MAIN(TestIconButton)
#include "tst_iconbutton.moc"
