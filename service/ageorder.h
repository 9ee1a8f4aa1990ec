#pragma once

#include <QString>

#include <map>

namespace tavro::assistantservice {

/// Which of the things that are kept is the oldest, and what they take together.
class AgeOrder {
public:
    using Number = quint64;

    /// Numbers grow with each call.
    Number add(const QString &id, qint64 bytes);
    /// A number that is not (any more) there is ignored.
    void remove(Number number);

    bool isEmpty() const { return m_things.empty(); }
    /// Not to be called where it is empty.
    const QString &oldest() const { return m_things.begin()->second.id; }
    qint64 bytes() const { return m_bytes; }

private:
    struct Thing {
        QString id;
        qint64 bytes = 0;
    };

    std::map<Number, Thing> m_things;
    Number m_last = 0;
    qint64 m_bytes = 0;
};

} // namespace tavro::assistantservice
