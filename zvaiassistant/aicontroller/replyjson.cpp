#include "aicontroller/replyjson.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QString>

#include <vector>

namespace tavro::aiassistant {

namespace {

constexpr int mostValues = 100'000;

/// Goes once through a text that is to be JSON. What it does not understand the parser will refuse.
class JsonCheck {
public:
    explicit JsonCheck(const QByteArray &json)
        : m_json(json)
    { }

    bool isSafe()
    {
        while (m_isSafe && m_at < m_json.size())
            takeNext();
        return m_isSafe;
    }

private:
    struct Container {
        bool isObject;
        bool isKeyNext;
        QString key;
        QSet<QString> keysOfContainers;
    };

    void takeNext()
    {
        switch (m_json.at(m_at++)) {
        case '"':
            takeString();
            break;
        case '{':
            enter(true);
            break;
        case '[':
            enter(false);
            break;
        case '}':
        case ']':
            leave();
            break;
        case ',':
            takeComma();
            break;
        default:
            break;
        }
    }

    // Each value but an empty container's stands behind a comma or an opening bracket.
    void countValue() { m_isSafe = m_isSafe && ++m_values <= mostValues; }

    void enter(bool isObject)
    {
        countValue();
        if (!m_open.empty() && m_open.back().isObject)
            m_open.back().keysOfContainers.insert(m_open.back().key);
        m_open.push_back({isObject, isObject, {}, {}});
    }

    void leave()
    {
        if (!m_open.empty())
            m_open.pop_back();
    }

    void takeComma()
    {
        countValue();
        if (!m_open.empty())
            m_open.back().isKeyNext = m_open.back().isObject;
    }

    void takeString()
    {
        const int begin = m_at;
        while (m_at < m_json.size() && m_json.at(m_at) != '"')
            m_at += m_json.at(m_at) == '\\' ? 2 : 1;
        if (!m_open.empty() && m_open.back().isKeyNext)
            takeKey(keyOf(m_json.mid(begin, m_at - begin)));
        ++m_at;
    }

    void takeKey(const QString &key)
    {
        m_open.back().isKeyNext = false;
        m_open.back().key = key;
        m_isSafe = m_isSafe && !m_open.back().keysOfContainers.contains(key);
    }

    static QString keyOf(const QByteArray &text)
    {
        if (!text.contains('\\'))
            return QString::fromUtf8(text);
        return QJsonDocument::fromJson("[\"" + text + "\"]").array().first().toString();
    }

    const QByteArray &m_json;
    int m_at = 0;
    int m_values = 0;
    bool m_isSafe = true;
    std::vector<Container> m_open;
};

} // namespace

QJsonDocument readJson(const QByteArray &body)
{
    return JsonCheck(body).isSafe() ? QJsonDocument::fromJson(body) : QJsonDocument();
}

} // namespace tavro::aiassistant
