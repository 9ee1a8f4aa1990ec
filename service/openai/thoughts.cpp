#include "openai/thoughts.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

const QRegularExpression &mark()
{
    static const QRegularExpression expression(
        QStringLiteral("<(/?)(?:think|thinking|thought|reasoning|seed:think)>|\\[(/?)THINK\\]|◁(/?)think▷"),
        QRegularExpression::CaseInsensitiveOption);
    return expression;
}

bool closes(const QRegularExpressionMatch &match)
{
    return match.captured(1) == QLatin1String("/") || match.captured(2) == QLatin1String("/")
        || match.captured(3) == QLatin1String("/");
}

QString endOfMessage(const QString &text)
{
    static const QRegularExpression end(QStringLiteral("<\\|(?:end|return|call|start)\\|>"));
    return text.left(text.indexOf(end));
}

void readChannel(const QString &part, ChanneledText &result)
{
    const QLatin1String message("<|message|>");
    const int begin = part.indexOf(message);
    const QString head = part.left(begin);
    if (head.contains(QLatin1String("to="))) {
        result.calls = true;
    } else if (begin >= 0 && head.trimmed().startsWith(QLatin1String("final"))) {
        result.text += endOfMessage(part.mid(begin + message.size()));
    }
}

} // namespace

QString withoutThoughts(const QString &text)
{
    QString result;
    int depth = 0;
    int behindMark = 0;
    QRegularExpressionMatchIterator marks = mark().globalMatch(text);
    while (marks.hasNext()) {
        const QRegularExpressionMatch match = marks.next();
        if (depth == 0) {
            result += text.midRef(behindMark, match.capturedStart() - behindMark);
        }
        behindMark = match.capturedEnd();
        if (!closes(match)) {
            ++depth;
        } else if (depth > 0) {
            --depth;
        } else {
            // A chat template has opened the section by itself.
            result.clear();
        }
    }
    if (depth == 0) {
        result += text.midRef(behindMark);
    }
    return result.trimmed();
}

ChanneledText readChannels(const QString &text)
{
    const QString channel = QStringLiteral("<|channel|>");
    if (!text.contains(channel)) {
        return {text, false};
    }
    const QStringList parts = text.split(channel);
    ChanneledText result{endOfMessage(parts.first()), false};
    std::for_each(parts.begin() + 1, parts.end(), [&result](const QString &part) { readChannel(part, result); });
    return result;
}

} // namespace tavro::assistantservice
