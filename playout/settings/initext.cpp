#include "settings/initext.h"

#include <algorithm>

namespace tavro::playout {

namespace {

bool gives(const QString &line, const QString &name)
{
    const int equals = line.indexOf(QLatin1Char('='));
    return equals > 0 && line.left(equals).trimmed() == name;
}

bool isPlain(QChar each)
{
    return (each.unicode() < 128 && each.isLetterOrNumber()) || QStringLiteral("./:_-").contains(each);
}

} // namespace

QString iniValue(const QString &value)
{
    if (!value.isEmpty() && std::all_of(value.begin(), value.end(), isPlain))
        return value;
    // An at sign in front marks Qt's own types.
    QString escaped = value.startsWith(QLatin1Char('@')) ? QLatin1Char('@') + value : value;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    escaped.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

IniText::IniText(const QString &text)
    : m_lines(text.split(QLatin1Char('\n')))
{
    if (m_lines.last().isEmpty())
        m_lines.removeLast();
}

// Lines before the first group belong to none, as those of [General] do in Qt's reading.
std::vector<int> IniText::groupless() const
{
    std::vector<int> places;
    bool isGroupless = true;
    for (int at = 0; at < m_lines.size(); ++at) {
        const QString line = m_lines.at(at).trimmed();
        if (line.startsWith(QLatin1Char('[')))
            isGroupless = line.compare(QLatin1String("[General]"), Qt::CaseInsensitive) == 0;
        if (isGroupless)
            places.push_back(at);
    }
    return places;
}

std::vector<int> IniText::placesOf(const QString &name) const
{
    std::vector<int> places = groupless();
    const auto isOther = [&](int at) { return !gives(m_lines.at(at), name); };
    places.erase(std::remove_if(places.begin(), places.end(), isOther), places.end());
    return places;
}

void IniText::set(const QString &name, const QString &value)
{
    const QString line = name + QLatin1Char('=') + iniValue(value);
    const std::vector<int> places = placesOf(name);
    if (places.empty()) {
        m_lines.insert(placeForNew(), line);
        return;
    }
    remove(name);
    m_lines.insert(places.front(), line);
}

// Behind the last line that says something, so that a group keeps the blank lines before it.
int IniText::placeForNew() const
{
    const std::vector<int> places = groupless();
    const auto said =
        std::find_if(places.rbegin(), places.rend(), [this](int at) { return !m_lines.at(at).trimmed().isEmpty(); });
    return said == places.rend() ? 0 : *said + 1;
}

void IniText::remove(const QString &name)
{
    const std::vector<int> places = placesOf(name);
    for (auto at = places.rbegin(); at != places.rend(); ++at)
        m_lines.removeAt(*at);
}

QString IniText::text() const
{
    return m_lines.isEmpty() ? QString() : m_lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace tavro::playout
