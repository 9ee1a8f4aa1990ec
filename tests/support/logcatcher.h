#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QtGlobal>

#include <memory>

namespace tavro::testsupport {

/// One line of either log.
struct LogLine {
    enum class Origin { Qt, Host };
    enum class Level { Debug, Info, Warning, Error };

    Origin origin = Origin::Qt;
    Level level = Level::Debug;
    QString category; ///< Qt: the logging category
    QString text;
    QString file; ///< host log: the place that the record carries
    int line = 0;
    QString function;
};

/// Catches Qt's messages and the host's log while it lives. One at a time; made and destroyed while no other thread
/// logs.
///
/// All debug and info lines are kept for the test to look at. A warning or an error that no ExpectedLog announced is a
/// complaint, and so is an announced line that did not come: check complaints() at the end of the test.
class LogCatcher {
public:
    LogCatcher();
    ~LogCatcher();

    QVector<LogLine> lines() const;
    QStringList texts() const; ///< the lines' texts, in order
    int count(const QString &fragment) const; ///< lines of any level that hold @p fragment
    bool contains(const QString &fragment) const { return count(fragment) > 0; }
    QVector<LogLine> hostLines() const;
    void forget(); ///< drops the lines, not the complaints

    QStringList complaints() const;

private:
    friend class ExpectedLog;
    class Private;
    std::unique_ptr<Private> d;
};

/// Announces warnings or errors within a scope: those that match @p pattern are no complaint there. Where fewer than
/// @p atLeast come before the scope ends, that is one.
class ExpectedLog {
public:
    ExpectedLog(LogCatcher &catcher, const QRegularExpression &pattern, int atLeast = 1);
    ExpectedLog(LogCatcher &catcher, const QString &fragment, int atLeast = 1);
    ~ExpectedLog();

    ExpectedLog(const ExpectedLog &) = delete;
    ExpectedLog &operator=(const ExpectedLog &) = delete;

    int seen() const;

private:
    LogCatcher::Private &m_catcher;
    int m_id;
};

} // namespace tavro::testsupport
