#include "console.h"

#include <QByteArray>

#include <cstdio>
#include <unistd.h>

namespace tavro::consolehost {

namespace {

enum class LineBreaks { Kept, Replaced };

bool isLineBreak(QChar character)
{
    return character == QLatin1Char('\n') || character == QLatin1Char('\t');
}

QString printable(QString text, LineBreaks lineBreaks)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar &character : text) {
        const bool kept = lineBreaks == LineBreaks::Kept && isLineBreak(character);
        if (character.category() == QChar::Other_Control && !kept)
            character = QLatin1Char(' ');
    }
    return text;
}

void writeLine(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace

void console::result(const QString &name, const QString &text)
{
    writeLine(stdout, name + QStringLiteral(": ") + printable(text, LineBreaks::Replaced));
}

void console::text(const QString &text)
{
    writeLine(stdout, printable(text, LineBreaks::Kept));
}

void console::message(const QString &text)
{
    writeLine(stderr, QStringLiteral("consolehost: ") + printable(text, LineBreaks::Replaced));
}

bool console::isWritten()
{
    return std::ferror(stdout) == 0;
}

void console::prompt()
{
    if (isatty(STDIN_FILENO) && isatty(STDOUT_FILENO)) {
        std::fputs("> ", stdout);
        std::fflush(stdout);
    }
}

} // namespace tavro::consolehost
