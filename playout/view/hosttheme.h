#pragma once

#include "ztheme/ztheme.h"

#include <QColor>
#include <QPalette>

namespace tavro::playout {

/// The assistant's theme, applied to the host's own window: the two look like one program.
class HostTheme {
public:
    /// Reads the theme file at @p path, a resource or a file.
    explicit HostTheme(const QString &path);

    /// Reads another one in its place. What was made of the old one does not change by itself.
    void load(const QString &path);

    /// The colour of a [Colors] key of the theme; magenta where it lacks it, so that a gap is seen.
    QColor color(const char *key) const;

    QPalette palette() const;

    /// The sheet of the host's window. Its rules name the host's own widgets, so that none reaches the panel.
    QString styleSheet();

private:
    ZT::Theme m_theme;
};

} // namespace tavro::playout
