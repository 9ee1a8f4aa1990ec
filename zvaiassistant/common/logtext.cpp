#include "common/logtext.h"

#include <QRegularExpression>

namespace tavro::aiassistant {

namespace {

constexpr int longestAddress = 4096; ///< characters

// Category "other, format" holds the marks of direction and joining; the separators end a line in some viewers.
bool isHarmless(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

QString writtenOut(QChar character)
{
    switch (character.unicode()) {
    case u'\n':
        return QStringLiteral("\\n");
    case u'\r':
        return QStringLiteral("\\r");
    case u'\t':
        return QStringLiteral("\\t");
    default:
        return QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
}

} // namespace

QString loggable(const QString &text)
{
    QString line;
    for (const QChar character : text) {
        if (isHarmless(character))
            line.append(character);
        else
            line.append(writtenOut(character));
    }
    return line;
}

std::string loggable(const std::string &text)
{
    return loggable(QString::fromStdString(text)).toStdString();
}

QString loggableAddress(const QString &address)
{
    // Blanks count too: Qt takes them for a part of the password.
    static const QRegularExpression credentials(QStringLiteral("//[^/?#]*@"));
    const QString open = QString(address).replace(credentials, QStringLiteral("//"));
    if (open.size() <= longestAddress)
        return loggable(open);
    return loggable(open.left(longestAddress)) + QStringLiteral("... (%1 characters)").arg(open.size());
}

std::string loggableAddress(const std::string &address)
{
    return loggableAddress(QString::fromStdString(address)).toStdString();
}

QString withoutCredentials(QString text)
{
    static const QRegularExpression credentials(QStringLiteral("//[^/?#\\s]*@"));
    return text.replace(credentials, QStringLiteral("//"));
}

} // namespace tavro::aiassistant
