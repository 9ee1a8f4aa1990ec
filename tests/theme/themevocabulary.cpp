#include "themevocabulary.h"

#include <QFile>

namespace themevocabulary {

namespace {

QStringList numbered(const char *family, int count)
{
    QStringList keys;
    for (int number = 1; number <= count; ++number)
        keys << QStringLiteral("%1_%2").arg(QLatin1String(family)).arg(number);
    return keys;
}

} // namespace

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QMap<QString, QMap<QString, QString>> rawSections()
{
    QMap<QString, QMap<QString, QString>> sections;
    QString section;
    const QStringList lines =
        contents(QStringLiteral(":/aiassistant/theme/default_aiassistant.theme")).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const int equals = line.indexOf(QLatin1Char('='));
        if (line.startsWith(QLatin1Char('[')))
            sections[section = line.mid(1, line.size() - 2)];
        else if (!line.startsWith(QLatin1Char(';')) && equals > 0)
            sections[section][line.left(equals)] = line.mid(equals + 1);
    }
    return sections;
}

QStringList paletteKeys()
{
    QStringList keys = numbered("Brand", 10) + numbered("Bg", 7);
    keys += words("W100 W90 W80 W70 W40 W20 W15 W10 W8 B20 B32 B50_ B100");
    for (const char *family : {"Red", "Yellow", "Green", "Orange"})
        keys += numbered(family, 10);
    return keys;
}

QString exportedName(const QString &paletteKey)
{
    const bool odd = paletteKey == QLatin1String("B50_");
    return QStringLiteral("Color_") + (odd ? QStringLiteral("B50") : paletteKey);
}

QStringList colorKeys()
{
    QStringList keys =
        words("DefaultForegroundColor DisabledForegroundColor HighlightedForegroundColor ErrorHintForegroundColor "
              "ToolTipBackgroundColor MenuBackgroundColor MenuHighlightBackgroundColor EditBackgroundColor "
              "EditDisabledBackgroundColor EditBorderColor EditHighlightBorderColor SliderGrooveBackgroundColor "
              "SliderAcrossBackgroundColor DialogMaskBackgroundColor ScrollBarGrooveBackgroundColor "
              "ScrollBarHandleBackgroundColor GeneralButtonBackgroundNormal GeneralButtonBackgroundHover "
              "GeneralButtonBackgroundPressed AssistButtonBackgroundNormal AssistButtonBackgroundHover "
              "AssistButtonBackgroundPressed MenuButtonBackgroundHover MenuButtonBackgroundPressed Button_Text_Normal "
              "Button_Text_Hover Button_Text_Pressed AskArea_Background");
    keys += numbered("BackgroundColor", 7);
    const QStringList palette = paletteKeys();
    for (const QString &key : palette)
        keys << exportedName(key);
    return keys;
}

QStringList imageKeys()
{
    QStringList keys = words("aiassistant user answer answerChecked generateImage generateImageChecked onlineSearch "
                             "onlineSearchChecked downArrow close closeHover closePressed downloadBig downloadBigHover "
                             "downloadBigPressed last next modelNormal modelChecked loading");
    for (const char *button : {"copy", "modify", "tryagain", "clear", "download", "magnifier"}) {
        for (const char *state : {"normal", "hover", "pressed"})
            keys << QStringLiteral("%1_%2").arg(QLatin1String(button), QLatin1String(state));
    }
    return keys;
}

} // namespace themevocabulary
