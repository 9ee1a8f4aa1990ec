#include "page.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace page {

namespace {

QStringList cellsOf(const QString &line)
{
    QStringList cells = line.mid(1).split(QLatin1Char('|'));
    for (QString &cell : cells)
        cell = cell.trimmed();
    return cells;
}

QRegularExpression fencedBlock()
{
    return QRegularExpression(QStringLiteral("^```(\\w*).*?\\n(.*?)^```$"),
                              QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
}

} // namespace

QString path(const QString &name)
{
    return QStringLiteral(REPOSITORY_FOLDER "/") + name;
}

QString contents(const QString &name)
{
    QFile file(path(name));
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString sources()
{
    QString text;
    for (const char *const folder : {"zvaiassistant", "platform", "runtime", "playout"}) {
        QDirIterator files(path(QLatin1String(folder)), {QStringLiteral("*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QFile::ReadOnly))
                text += QString::fromUtf8(file.readAll());
        }
    }
    return text;
}

QVector<QStringList> table(const QString &text, const QString &heading)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    int line = 0;
    while (line + 1 < lines.size()
           && !(cellsOf(lines.at(line)).value(0) == heading && lines.at(line + 1).startsWith(QLatin1String("|---"))))
        ++line;
    QVector<QStringList> rows;
    for (line += 2; line < lines.size() && lines.at(line).startsWith(QLatin1Char('|')); ++line)
        rows.append(cellsOf(lines.at(line)));
    return rows;
}

QStringList codeIn(const QString &text)
{
    QStringList code;
    const QRegularExpression quoted(QStringLiteral("`([^`]+)`"));
    for (auto matches = quoted.globalMatch(text); matches.hasNext();)
        code += matches.next().captured(1);
    return code;
}

QStringList found(const QString &text, const QString &pattern)
{
    QStringList list;
    const QRegularExpression expression(pattern);
    for (auto matches = expression.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        list += match.captured(expression.captureCount() > 0 ? 1 : 0);
    }
    list.removeDuplicates();
    list.sort();
    return list;
}

QString prose(QString text)
{
    return text.remove(fencedBlock());
}

QStringList blocks(const QString &text, const QString &language)
{
    QStringList list;
    const QRegularExpression fenced = fencedBlock();
    for (auto matches = fenced.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.captured(1) == language)
            list += match.captured(2);
    }
    return list;
}

} // namespace page
