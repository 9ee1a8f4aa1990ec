#include "placeholders.h"

#include <QStringMatcher>

#include <algorithm>

namespace ZT {

namespace {

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool startsWord(const QString &sheet, int position)
{
    return position == 0 || !isWordCharacter(sheet.at(position - 1));
}

int wordEnd(const QString &sheet, int position)
{
    while (position < sheet.size() && isWordCharacter(sheet.at(position)))
        ++position;
    return position;
}

bool standsInUrl(const QString &sheet, int begin, int end)
{
    return begin > 0 && sheet.at(begin - 1) == QLatin1Char('(') && end < sheet.size()
        && sheet.at(end) == QLatin1Char(')');
}

// A bracket in a path, as in "Program Files (x86)", would end the url; other characters have a meaning to Qt, too.
bool isPlain(QChar c)
{
    return c.isLetterOrNumber() || QStringLiteral("/._-: ").contains(c);
}

QString quotedWhereNeeded(const QString &path)
{
    return std::all_of(path.begin(), path.end(), isPlain) ? path : QLatin1Char('"') + path + QLatin1Char('"');
}

class Replacer {
public:
    Replacer(const QString &sheet, const QString &prefix, const ValueOf &color, const ValueOf &image)
        : m_sheet(sheet)
        , m_start(prefix + QLatin1String(".theme."))
        , m_color(color)
        , m_image(image)
    { }

    QString run()
    {
        const QStringMatcher matcher(m_start);
        m_out.reserve(m_sheet.size());
        for (int at = matcher.indexIn(m_sheet); at >= 0; at = matcher.indexIn(m_sheet, m_end))
            step(at);
        m_out += m_sheet.midRef(m_copied);
        return m_out;
    }

private:
    void step(int begin)
    {
        m_end = begin + m_start.size();
        if (!startsWord(m_sheet, begin))
            return;
        const QStringRef kind = m_sheet.midRef(m_end, kindSize);
        if (kind == QLatin1String("color."))
            replace(begin, [this](int, const QString &key) { return m_color(key); });
        else if (kind == QLatin1String("image."))
            replace(begin, [this](int from, const QString &key) { return imageText(from, key); });
    }

    template <typename Value>
    void replace(int begin, Value value)
    {
        const int keyBegin = m_end + kindSize;
        m_end = wordEnd(m_sheet, keyBegin);
        m_out += m_sheet.midRef(m_copied, begin - m_copied);
        m_out += value(begin, m_sheet.mid(keyBegin, m_end - keyBegin));
        m_copied = m_end;
    }

    QString imageText(int begin, const QString &key) const
    {
        const QString path = m_image(key);
        return standsInUrl(m_sheet, begin, m_end) ? quotedWhereNeeded(path) : path;
    }

    static constexpr int kindSize = 6; // "color." and "image."

    const QString &m_sheet;
    const QString m_start;
    const ValueOf &m_color;
    const ValueOf &m_image;
    QString m_out;
    int m_copied = 0;
    int m_end = 0;
};

} // namespace

QString withoutPlaceholders(const QString &sheet, const QString &prefix, const ValueOf &color, const ValueOf &image)
{
    return Replacer(sheet, prefix, color, image).run();
}

} // namespace ZT
