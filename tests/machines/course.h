#pragma once

#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>

/// How far the clients of one test have come with the questions that they ask in turn. Shared by their threads.
class Course {
public:
    Course(int clients, int questions);

    static QString questionText(int number) { return QStringLiteral("Question %1").arg(number); }
    bool isTurnOf(int client, int question) const { return question < m_questions && question % m_clients == client; }
    int questions() const { return m_questions; }

    void advance(); ///< one client saw the outcome of one question
    void fail(const QString &why); ///< only the first is kept

    /// Waits until every client has seen every outcome; false, with problem(), once one failed or nothing moves any
    /// more.
    bool isRun();
    QString problem() const;

    /// Resident memory of this process in KiB, when a tenth of all outcomes had been seen and when all had.
    long memoryAtATenth() const { return m_memoryAtATenth; }
    long memoryAtTheEnd() const { return m_memoryAtTheEnd; }

private:
    bool isOver() const { return m_seen == m_all || !m_problem.isEmpty(); }

    const int m_clients;
    const int m_questions;
    const int m_all;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_seen = 0;
    QString m_problem;
    long m_memoryAtATenth = 0;
    long m_memoryAtTheEnd = 0;
};
