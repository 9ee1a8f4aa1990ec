#include "step.h"

#include "pictureratio.h"

#include <QHash>

namespace tavro::consolehost {

using aiassistant::PictureGenerateInfo;

namespace {

Step simple(Step::Kind kind)
{
    Step step;
    step.kind = kind;
    return step;
}

Step wrong(const QString &what)
{
    Step step = simple(Step::Kind::Wrong);
    step.text = what;
    return step;
}

Step readSwitch(Step::Kind kind, const QString &command, const QString &value)
{
    Step step = simple(kind);
    step.on = value == QLatin1String("on");
    if (!step.on && value != QLatin1String("off"))
        return wrong(QStringLiteral("%1 takes on or off").arg(command));
    return step;
}

// Takes name=VALUE or name="VALUE WITH BLANKS" off the front.
bool takeSetting(QString &text, const QString &name, QString &value)
{
    const QString prefix = name + QLatin1Char('=');
    if (!text.startsWith(prefix))
        return false;
    const QString rest = text.mid(prefix.size());
    const int closingQuote = rest.startsWith(QLatin1Char('"')) ? rest.indexOf(QLatin1Char('"'), 1) : -1;
    const int end = closingQuote > 0 ? closingQuote : rest.section(QLatin1Char(' '), 0, 0).size();
    value = closingQuote > 0 ? rest.mid(1, end - 1) : rest.left(end);
    text = rest.mid(end + 1).trimmed();
    return true;
}

Step readPicture(QString text, PictureGenerateInfo info)
{
    for (QString value;;) {
        if (takeSetting(text, QStringLiteral("style"), value))
            info.style = value.toStdString();
        else if (!takeSetting(text, QStringLiteral("ratio"), value))
            return pictureStep(text, info);
        else if (!setRatio(info, value))
            return wrong(QStringLiteral("unknown ratio: %1").arg(value));
    }
}

Step readBareCommand(const QString &command, const QString &rest)
{
    static const QHash<QString, Step::Kind> kinds{
        {QStringLiteral("/download"), Step::Kind::Download}, {QStringLiteral("/stop"), Step::Kind::Stop},
        {QStringLiteral("/clear"), Step::Kind::Clear},       {QStringLiteral("/media"), Step::Kind::Media},
        {QStringLiteral("/help"), Step::Kind::Help},         {QStringLiteral("/quit"), Step::Kind::Quit},
    };
    const auto found = kinds.constFind(command);
    if (found == kinds.constEnd())
        return wrong(QStringLiteral("unknown command: %1 (/help lists them)").arg(command));
    if (!rest.isEmpty())
        return wrong(QStringLiteral("%1 takes nothing behind it").arg(command));
    return simple(*found);
}

} // namespace

Step askStep(const QString &question)
{
    if (question.trimmed().isEmpty())
        return wrong(QStringLiteral("the question is empty"));
    Step step = simple(Step::Kind::Ask);
    step.text = question;
    return step;
}

Step pictureStep(const QString &description, const PictureGenerateInfo &defaults)
{
    if (description.trimmed().isEmpty())
        return wrong(QStringLiteral("the description of the picture is empty"));
    Step step = simple(Step::Kind::Picture);
    step.picture = defaults;
    step.picture.content = description.toStdString();
    return step;
}

Step readStep(const QString &line, const PictureGenerateInfo &defaults)
{
    const QString text = line.trimmed();
    if (text.isEmpty())
        return {};
    if (!text.startsWith(QLatin1Char('/')))
        return askStep(text);
    const QString command = text.section(QLatin1Char(' '), 0, 0);
    const QString rest = text.section(QLatin1Char(' '), 1).trimmed();
    if (command == QLatin1String("/picture"))
        return readPicture(rest, defaults);
    if (command == QLatin1String("/deep"))
        return readSwitch(Step::Kind::DeepModel, command, rest);
    if (command == QLatin1String("/online"))
        return readSwitch(Step::Kind::OnlineSearch, command, rest);
    return readBareCommand(command, rest);
}

QString stepHelp()
{
    return QStringLiteral("A line is a question, unless it begins with a slash:\n"
                          "  /picture [style=NAME] [ratio=%1] DESCRIPTION\n"
                          "                  ask for a picture; a NAME with blanks stands in quotation marks\n"
                          "  /download       save the last picture as a file\n"
                          "  /stop           give up the answer that is awaited, at once\n"
                          "  /clear          begin a new conversation\n"
                          "  /deep on|off    switch the deep model; begins a new conversation\n"
                          "  /online on|off  switch online search; begins a new conversation\n"
                          "  /media          list the media library\n"
                          "  /help           show this\n"
                          "  /quit           end, like the end of input\n"
                          "Lines are carried out one after the other; only /stop does not wait for its turn.")
        .arg(pictureRatios().join(QLatin1Char('|')));
}

} // namespace tavro::consolehost
