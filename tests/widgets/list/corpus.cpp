#include "corpus.h"

#include <QStringList>

namespace tavro::testsupport {

QString englishAnswer()
{
    return QStringLiteral(
        "The harbour clip is on layer 2 now, at half its volume. It runs for 42 seconds and then begins again, because "
        "the layer is set to loop; the other layers of the program stay as they are.\n\n"
        "To bring it to the front, move layer 2 above the logo. If the picture should fade in, set the transition of "
        "the "
        "layer before you play the clip the next time.\n"
        "1. Open the program.\n"
        "2. Choose the layer, and in it the transition \"Dissolve\".\n"
        "3. Play.");
}

QString chineseAnswer()
{
    return QStringLiteral("港口素材现在正在第二图层播放，音量为一半。素材时长四十二秒，播放结束后会自动重新开始，因为该"
                          "图层设置为循环播放；节目中的"
                          "其他图层保持不变。如果需要把画面放到最前面，请将第二图层移动到台标之上。\n\n如果希望画面淡入"
                          "，请在下次播放之前设置图层的"
                          "转场效果。\n1. 打开节目。\n2. 选择图层，并在其中选择“叠化”转场。\n3. 播放。");
}

QString koreanAnswer()
{
    return QStringLiteral("항구 영상이 지금 레이어 2에서 절반 음량으로 재생되고 있습니다. 길이는 42초이며, 레이어가 "
                          "반복으로 설정되어 있으므로 "
                          "끝나면 다시 시작합니다. 프로그램의 다른 레이어는 그대로 유지됩니다.\n\n화면을 앞으로 "
                          "가져오려면 레이어 2를 로고 위로 "
                          "옮기십시오.\n1. 프로그램을 엽니다.\n2. 레이어를 선택합니다.\n3. 재생합니다.");
}

QString russianAnswer()
{
    return QStringLiteral(
        "Ролик «Гавань» теперь идёт на слое 2 с половинной громкостью. Он длится 42 секунды и затем начинается снова, "
        "потому что слой настроен на повтор; остальные слои программы остаются без изменений.\n\n"
        "Чтобы вывести его на передний план, поместите слой 2 над логотипом.\n"
        "1. Откройте программу.\n2. Выберите слой и переход «Наплыв».\n3. Запустите воспроизведение.");
}

namespace {

QString longWords()
{
    return QString(150, u'w') + QStringLiteral(" and ") + QString(90, u'i') + QStringLiteral(" https://example.org/")
        + QString(60, u'm') + QStringLiteral("/clip.mov end\n") + QString(60, u'港');
}

QString paragraph()
{
    return QStringLiteral("word by word the paragraph grows without any end of a line in it, ").repeated(6);
}

QString rightToLeft()
{
    return QStringLiteral("المقطع على الطبقة 2 الآن.\nשלום, layer 2 (מיד)\n")
        + QStringLiteral("قصير وطويل ").repeated(12);
}

QString breaks()
{
    return QStringLiteral("one\r\ntwo\rthree\r\r\nfour\n\nfive\n\rsix") + QChar(QChar::LineSeparator)
        + QStringLiteral("seven") + QChar(QChar::LineSeparator) + QString(120, u'e') + QChar(QChar::LineSeparator)
        + QChar(QChar::ParagraphSeparator) + QStringLiteral("eight\r\n");
}

QString emoji()
{
    return QStringLiteral("Done \U0001F44D\U0001F3FD family \U0001F468\u200D\U0001F469\u200D\U0001F467 flag "
                          "\U0001F1E9\U0001F1EA heart \u2764\uFE0F e\u0301 a\u0308o\u0302 \U00020BB7 end\n\U0001F600");
}

} // namespace

std::vector<CorpusText> corpus()
{
    return {
        {"empty", QString()},
        {"oneCharacter", QStringLiteral("x")},
        {"english", englishAnswer()},
        {"chinese", chineseAnswer()},
        {"korean", koreanAnswer()},
        {"russian", russianAnswer()},
        {"mixed", QStringLiteral("Layer 2 播放 harbour.mov 音量 50 % — «громкость» 절반, ok? ").repeated(5)},
        {"emoji", emoji()},
        {"tabs", QStringLiteral("\tone\ttwo\n\t\tthree\nfour\t") + QStringLiteral("a\tb\t").repeated(8)},
        {"longWords", longWords()},
        {"paragraph", paragraph()},
        {"breaks", breaks()},
        {"emptyLines", QStringLiteral("\n\n\nafter three\n\n")},
        {"rightToLeft", rightToLeft()},
        {"blanks",
         QStringLiteral("  two  \n   \nno\u00A0break\u00A0") + QStringLiteral("wide blank ").repeated(9)
             + QStringLiteral("   ")},
        {"control",
         QStringLiteral("bell\a form\f vertical\v zero") + QChar(0) + QStringLiteral("soft\u00ADhyphen\uFFFC")
             + QChar(0xfdd0) + QStringLiteral("frame") + QChar(0xfdd1)},
        {"loneSurrogates",
         QStringLiteral("a") + QChar(0xd83d) + QStringLiteral("b") + QChar(0xde00) + QStringLiteral("c")},
        {"markup", QStringLiteral("<b>bold</b> &amp; | a < b |\n|")},
    };
}

QString thousandLines()
{
    QStringList lines;
    for (int number = 0; number < 1000; ++number)
        lines += QStringLiteral("%1. %2").arg(number).arg(QString(number % 90, number % 3 == 0 ? u'港' : u'a'));
    return lines.join(u'\n');
}

} // namespace tavro::testsupport
