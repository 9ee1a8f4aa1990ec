#include "windowlayout.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>

namespace tavro::playout {

namespace {

constexpr int version = 1;
constexpr int longestSide = 32768;
constexpr QSize smallestGrip{128, 32}; // of the window's upper edge, by which it is moved

/// Reads values, and remembers whether all of them were there and made sense.
class Reader {
public:
    explicit Reader(const QString &path)
        : m_settings(path, QSettings::IniFormat)
    { }

    int number(const char *name, int lowest, int highest)
    {
        bool isNumber = false;
        const int value = m_settings.value(QLatin1String(name)).toString().toInt(&isNumber);
        m_isWhole = m_isWhole && isNumber && value >= lowest && value <= highest;
        return value;
    }

    bool yesOrNo(const char *name) { return number(name, 0, 1) == 1; }

    bool isWhole() const { return m_isWhole && m_settings.status() == QSettings::NoError; }

private:
    QSettings m_settings;
    bool m_isWhole = true;
};

} // namespace

std::optional<WindowLayout> readLayout(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    Reader reader(path);
    reader.number("version", version, version);
    WindowLayout layout;
    layout.geometry = {reader.number("x", -longestSide, longestSide), reader.number("y", -longestSide, longestSide),
                       reader.number("width", 1, longestSide), reader.number("height", 1, longestSide)};
    layout.isMaximized = reader.yesOrNo("maximized");
    layout.isAssistantShown = reader.yesOrNo("assistant");
    layout.isLogShown = reader.yesOrNo("log");
    layout.logHeight = reader.number("logHeight", 0, longestSide);
    return reader.isWhole() ? std::optional(layout) : std::nullopt;
}

bool writeLayout(const QString &path, const WindowLayout &layout)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return false;
    QSettings settings(path, QSettings::IniFormat);
    settings.clear();
    settings.setValue(QStringLiteral("version"), version);
    settings.setValue(QStringLiteral("x"), layout.geometry.x());
    settings.setValue(QStringLiteral("y"), layout.geometry.y());
    settings.setValue(QStringLiteral("width"), layout.geometry.width());
    settings.setValue(QStringLiteral("height"), layout.geometry.height());
    settings.setValue(QStringLiteral("maximized"), int(layout.isMaximized));
    settings.setValue(QStringLiteral("assistant"), int(layout.isAssistantShown));
    settings.setValue(QStringLiteral("log"), int(layout.isLogShown));
    settings.setValue(QStringLiteral("logHeight"), layout.logHeight);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

bool isInReach(const WindowLayout &layout, const QVector<QRect> &screens)
{
    const QRect edge(layout.geometry.topLeft(), QSize(layout.geometry.width(), smallestGrip.height()));
    return std::any_of(screens.begin(), screens.end(), [&edge](const QRect &screen) {
        const QSize seen = screen.intersected(edge).size();
        return seen.width() >= smallestGrip.width() && seen.height() >= smallestGrip.height();
    });
}

} // namespace tavro::playout
