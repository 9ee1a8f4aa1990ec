#include "support/logcatcher.h"
#include "theme/theme.h"

#include <QtTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

class TestThemeWithoutApplication : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyTheThemeChanges();
};

// A machine that serves others has no widgets, and so no QApplication.
void TestThemeWithoutApplication::onlyTheThemeChanges()
{
    LogCatcher log;
    Theme theme(QStringLiteral("t"));
    {
        const ExpectedLog warning(log, QStringLiteral("no QApplication"));
        changeAppStyleSheet(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    }
    QCOMPARE(theme.themeName(), QStringLiteral("Default"));
    QCOMPARE(log.complaints(), QStringList());
}

QTEST_GUILESS_MAIN(TestThemeWithoutApplication)
#include "tst_themewithoutapplication.moc"
