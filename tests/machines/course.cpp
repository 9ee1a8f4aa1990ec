#include "course.h"

#include <QFile>
#include <QList>

namespace {

// A sanitizer build on a busy machine takes long for one question, but not so long.
constexpr std::chrono::seconds standstill{60};

long residentKiB()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QFile::ReadOnly))
        return 0;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return 0;
}

} // namespace

Course::Course(int clients, int questions)
    : m_clients(clients)
    , m_questions(questions)
    , m_all(clients * questions)
{ }

void Course::advance()
{
    const std::lock_guard lock(m_mutex);
    ++m_seen;
    if (m_seen == m_all / 10)
        m_memoryAtATenth = residentKiB();
    if (m_seen == m_all)
        m_memoryAtTheEnd = residentKiB();
    m_changed.notify_all();
}

void Course::fail(const QString &why)
{
    const std::lock_guard lock(m_mutex);
    if (m_problem.isEmpty())
        m_problem = why;
    m_changed.notify_all();
}

bool Course::isRun()
{
    std::unique_lock lock(m_mutex);
    while (!isOver()) {
        const int before = m_seen;
        if (!m_changed.wait_for(lock, standstill, [&] { return m_seen != before || isOver(); })) {
            m_problem = QStringLiteral("nothing moves after %1 of %2 outcomes").arg(m_seen).arg(m_all);
        }
    }
    return m_problem.isEmpty();
}

QString Course::problem() const
{
    const std::lock_guard lock(m_mutex);
    return m_problem;
}
