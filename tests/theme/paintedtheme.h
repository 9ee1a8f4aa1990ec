#pragma once

#include <QColor>
#include <QTemporaryDir>

namespace tavro::aiassistant {

/// A copy of the default theme on disk whose images are there: each is one plain colour of its own, so that a pixel
/// tells which image was drawn.
class PaintedTheme {
public:
    PaintedTheme();

    bool isValid() const { return m_valid; }

    /// The panel's sheets with this theme.
    QString styleSheet() const;

    /// The colour of the image of an [ImageFiles] key.
    QColor imageColor(const QString &key) const;

    /// The value of a [Colors] key.
    QColor color(const QString &key) const;

private:
    QString path() const;
    bool paint(const QString &key, const QString &file) const;

    QTemporaryDir m_folder;
    bool m_valid = false;
};

} // namespace tavro::aiassistant
