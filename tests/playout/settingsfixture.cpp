#include "playout/settingsfixture.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace tavro::testsupport {

bool SettingsFixture::open()
{
    // Where no window manager gives it back, the window does not get the keyboard from a dialogue that was closed.
    host->window().activateWindow();
    if (!QTest::qWaitForWindowActive(&host->window()))
        return false;
    QTest::keyClick(&host->window(), Qt::Key_Comma, Qt::ControlModifier);
    dialog = nullptr;
    const auto dialogs = host->window().findChildren<QDialog *>(QStringLiteral("settings"));
    for (QDialog *const each : dialogs)
        dialog = each->isVisible() ? each : dialog.data();
    return dialog && QTest::qWaitForWindowActive(dialog);
}

QString SettingsFixture::labelOf(const char *name) const
{
    const QLabel &label = field<QLabel>(name);
    return label.isVisible() ? label.text() : QString();
}

void SettingsFixture::enter(const char *name, const QString &text)
{
    auto &edit = field<QWidget>(name);
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, text);
}

void SettingsFixture::click(const char *name)
{
    QTest::mouseClick(&field<QPushButton>(name), Qt::LeftButton);
}

void SettingsFixture::choose(const char *name, const QString &wanted)
{
    auto &box = field<QComboBox>(name);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    for (int entry = 0; entry < box.count() && box.currentData().toString() != wanted; ++entry)
        QTest::keyClick(&box, Qt::Key_Down);
}

QByteArray SettingsFixture::savedFile() const
{
    QFile file(options.settingsFile);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tavro::testsupport
