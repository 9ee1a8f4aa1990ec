#include "view/hosttheme.h"

#include <QSettings>

namespace tavro::playout {

HostTheme::HostTheme(const QString &path)
    : m_theme(QStringLiteral("playout.theme"))
{
    load(path);
}

void HostTheme::load(const QString &path)
{
    QSettings settings(path, QSettings::IniFormat);
    m_theme.readSettings(settings);
}

QColor HostTheme::color(const char *key) const
{
    const QColor color(m_theme.color(QLatin1String(key)));
    return color.isValid() ? color : QColor(Qt::magenta);
}

QPalette HostTheme::palette() const
{
    const QColor text = color("DefaultForegroundColor");
    const QColor disabled = color("DisabledForegroundColor");
    QPalette palette(color("BackgroundColor_5"), color("BackgroundColor_1"));
    palette.setColor(QPalette::Base, color("EditBackgroundColor"));
    palette.setColor(QPalette::AlternateBase, color("BackgroundColor_3"));
    palette.setColor(QPalette::ToolTipBase, color("ToolTipBackgroundColor"));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, color("MenuHighlightBackgroundColor"));
    palette.setColor(QPalette::HighlightedText, color("HighlightedForegroundColor"));
    palette.setColor(QPalette::PlaceholderText, color("Color_W70"));
    palette.setColor(QPalette::Link, color("Color_Brand_5"));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    return palette;
}

QString HostTheme::styleSheet()
{
    QString sheet;
    ZT::readStyleSheet({QStringLiteral(":/playout/playout.qss")}, sheet);
    ZT::replaceStyleSheet(&m_theme, QStringLiteral("playout"), sheet);
    return sheet;
}

} // namespace tavro::playout
