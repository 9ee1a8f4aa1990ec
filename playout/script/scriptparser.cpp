#include "script/scriptparser.h"

#include <QHash>
#include <QKeySequence>
#include <QStringList>

namespace tavro::playout {

namespace {

constexpr double longestWait = 3600.0;
constexpr int largestSide = 16384;

// The words of a line, taken from its front.
class Words {
public:
    explicit Words(const QString &line)
        : m_rest(line.trimmed())
    { }

    QString next()
    {
        const int end = m_rest.indexOf(QLatin1Char(' '));
        QString word = m_rest.left(end);
        m_rest = end < 0 ? QString() : m_rest.mid(end).trimmed();
        return word;
    }

    const QString &rest() const { return m_rest; }
    bool isEmpty() const { return m_rest.isEmpty(); }

private:
    QString m_rest;
};

QString readText(Words &words, ScriptStep &step)
{
    step.text = words.rest();
    return step.text.isEmpty() ? QStringLiteral("there is nothing to type") : QString();
}

QString readKey(Words &words, ScriptStep &step)
{
    const QKeySequence keys = QKeySequence::fromString(words.rest(), QKeySequence::PortableText);
    QString wrong = QStringLiteral("not a key: \"%1\"").arg(words.rest());
    if (keys.count() != 1)
        return wrong;
    step.key = keys[0];
    return step.key == Qt::Key_unknown ? wrong : QString();
}

QString readWidget(Words &words, ScriptStep &step)
{
    step.widget = words.next();
    if (step.widget.isEmpty())
        return QStringLiteral("the control's name is missing");
    return words.isEmpty() ? QString() : QStringLiteral("too much: \"%1\"").arg(words.rest());
}

QString readFile(Words &words, ScriptStep &step)
{
    step.text = words.rest();
    return step.text.isEmpty() ? QStringLiteral("the file's name is missing") : QString();
}

QString readSize(Words &words, ScriptStep &step)
{
    bool isWidth = false;
    bool isHeight = false;
    step.size = {words.next().toInt(&isWidth), words.next().toInt(&isHeight)};
    const QSize &size = step.size;
    const bool fits =
        size.width() > 0 && size.height() > 0 && size.width() <= largestSide && size.height() <= largestSide;
    return isWidth && isHeight && fits && words.isEmpty()
        ? QString()
        : QStringLiteral("size takes width and height, from 1 to %1").arg(largestSide);
}

QString readQuit(Words &words, ScriptStep & /*step*/)
{
    return words.isEmpty() ? QString() : QStringLiteral("too much: \"%1\"").arg(words.rest());
}

QString readLimit(Words &words, ScriptStep &step)
{
    const QString given = words.next();
    bool isNumber = false;
    const double seconds = given.toDouble(&isNumber);
    if (!isNumber || !(seconds > 0.0 && seconds <= longestWait))
        return QStringLiteral("wait takes a number of seconds up to %1, not \"%2\"").arg(longestWait).arg(given);
    step.limit = std::chrono::milliseconds(static_cast<int>(seconds * 1000.0));
    return {};
}

QString readCondition(Words &words, ScriptStep &step)
{
    using Condition = ScriptStep::Condition;
    static const QHash<QString, Condition> conditions{
        {QStringLiteral("visible"), Condition::Visible}, {QStringLiteral("hidden"), Condition::Hidden},
        {QStringLiteral("enabled"), Condition::Enabled}, {QStringLiteral("disabled"), Condition::Disabled},
        {QStringLiteral("focused"), Condition::Focused}, {QStringLiteral("text"), Condition::Text}};
    const QString word = words.next();
    const auto found = conditions.constFind(word);
    if (found == conditions.constEnd())
        return QStringLiteral("wait knows visible, hidden, enabled, disabled, focused and text, not \"%1\"").arg(word);
    step.condition = *found;
    return {};
}

QString readWait(Words &words, ScriptStep &step)
{
    QString error = readLimit(words, step);
    if (error.isEmpty())
        error = readCondition(words, step);
    if (!error.isEmpty())
        return error;
    if (step.condition != ScriptStep::Condition::Text)
        return readWidget(words, step);
    step.widget = words.next();
    step.text = words.rest();
    return step.text.isEmpty() ? QStringLiteral("wait for text takes the control's name and the text") : QString();
}

struct Command {
    ScriptStep::Kind kind;
    QString (*read)(Words &words, ScriptStep &step);
};

const QHash<QString, Command> &commands()
{
    using Kind = ScriptStep::Kind;
    static const QHash<QString, Command> all{{QStringLiteral("type"), {Kind::Type, readText}},
                                             {QStringLiteral("press"), {Kind::Press, readKey}},
                                             {QStringLiteral("click"), {Kind::Click, readWidget}},
                                             {QStringLiteral("hover"), {Kind::Hover, readWidget}},
                                             {QStringLiteral("wait"), {Kind::Wait, readWait}},
                                             {QStringLiteral("tell"), {Kind::Tell, readWidget}},
                                             {QStringLiteral("size"), {Kind::Resize, readSize}},
                                             {QStringLiteral("screenshot"), {Kind::Screenshot, readFile}},
                                             {QStringLiteral("quit"), {Kind::Quit, readQuit}}};
    return all;
}

QString readStep(const QString &line, ScriptStep &step)
{
    Words words(line);
    const QString name = words.next();
    const auto command = commands().constFind(name);
    if (command == commands().constEnd())
        return QStringLiteral("unknown step \"%1\"").arg(name);
    step.kind = command->kind;
    return command->read(words, step);
}

} // namespace

Script parseScript(const QString &text)
{
    Script script;
    int number = 0;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        ++number;
        const QString content = line.trimmed();
        if (content.isEmpty() || content.startsWith(QLatin1Char('#')))
            continue;
        ScriptStep step;
        step.line = number;
        const QString error = readStep(content, step);
        if (error.isEmpty())
            script.steps.push_back(step);
        else
            script.errors.append(QStringLiteral("line %1: %2").arg(number).arg(error));
    }
    return script;
}

} // namespace tavro::playout
