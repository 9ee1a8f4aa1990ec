#pragma once

#include "playout/hostfixture.h"

#include <QDialog>
#include <QPointer>

namespace tavro::testsupport {

/// The host with its settings open, which a test works with keys and the mouse.
class SettingsFixture : public HostFixture {
public:
    /// Opens the settings by their shortcut. False where they do not come up with the keyboard.
    bool open();

    template <typename Widget>
    Widget &field(const char *name) const
    {
        auto *const found = dialog ? dialog->findChild<Widget *>(QLatin1String(name)) : nullptr;
        if (!found)
            qFatal("there is no %s", name);
        return *found;
    }

    QString labelOf(const char *name) const; ///< empty where the label is hidden

    /// Types @p text in the place of what is in the field.
    void enter(const char *name, const QString &text);

    void click(const char *name);

    /// Chooses the entry with the data @p wanted by the keys.
    void choose(const char *name, const QString &wanted);

    bool isClosed() const { return !dialog || !dialog->isVisible(); }

    QByteArray savedFile() const;

    QPointer<QDialog> dialog;
};

} // namespace tavro::testsupport
