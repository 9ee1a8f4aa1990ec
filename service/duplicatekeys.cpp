#include "duplicatekeys.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <vector>

namespace tavro::assistantservice {

namespace {

// The parser gives up beyond.
constexpr size_t deepest = 1024;

class KeyScanner {
public:
    explicit KeyScanner(const QByteArray &json)
        : m_json(json)
    { }

    bool findsRepetition()
    {
        while (m_at < m_json.size() && m_levels.size() <= deepest && !m_found) {
            take(m_json[m_at++]);
        }
        return m_found;
    }

private:
    struct Level {
        bool object = false;
        bool keyIsNext = false;
        QString key;
        QSet<QString> containers;
    };

    void take(char c)
    {
        if (c == '"') {
            takeString();
        } else if (c == '{' || c == '[') {
            open(c == '{');
        } else if ((c == '}' || c == ']') && !m_levels.empty()) {
            m_levels.pop_back();
        } else if (c == ',' && !m_levels.empty()) {
            m_levels.back().keyIsNext = m_levels.back().object;
        }
    }

    void open(bool object)
    {
        if (!m_levels.empty() && m_levels.back().object) {
            m_levels.back().containers.insert(m_levels.back().key);
        }
        Level level;
        level.object = object;
        level.keyIsNext = object;
        m_levels.push_back(level);
    }

    void takeString()
    {
        const int begin = m_at;
        bool escapes = false;
        while (m_at < m_json.size() && m_json[m_at] != '"') {
            const bool escape = m_json[m_at] == '\\';
            escapes = escapes || escape;
            m_at += escape ? 2 : 1;
        }
        if (!m_levels.empty() && m_levels.back().keyIsNext) {
            takeKey(m_json.mid(begin, m_at - begin), escapes);
        }
        ++m_at;
    }

    void takeKey(const QByteArray &text, bool escapes)
    {
        Level &level = m_levels.back();
        level.keyIsNext = false;
        level.key = escapes ? QJsonDocument::fromJson("[\"" + text + "\"]").array().first().toString()
                            : QString::fromUtf8(text);
        m_found = level.containers.contains(level.key);
    }

    const QByteArray &m_json;
    int m_at = 0;
    bool m_found = false;
    std::vector<Level> m_levels;
};

} // namespace

bool repeatsContainerKey(const QByteArray &json)
{
    return KeyScanner(json).findsRepetition();
}

} // namespace tavro::assistantservice
