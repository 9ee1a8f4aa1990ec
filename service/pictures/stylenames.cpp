#include "pictures/stylenames.h"

#include "grammar/medianames.h"

#include <QHash>

namespace tavro::assistantservice {

namespace {

QHash<QString, Style> makeTable()
{
    const std::pair<Style, const char16_t *> names[] = {
        {Style::PortraitPhotography, u"Portrait Photography|Portrait|人像摄影|人像攝影|인물 사진|Портретное фото"},
        {Style::InkPainting, u"Ink Painting|Ink|水墨画|水墨畫|수묵화|Живопись тушью"},
        {Style::Watercolor,
         u"Watercolor Painting|Watercolour Painting|Watercolor|Watercolour|水彩画|水彩畫|수채화|Акварель"},
        {Style::FlatIllustration, u"Flat Illustration|Flat|扁平插画|扁平插畫|플랫 일러스트|Плоская иллюстрация"},
        {Style::Landscape, u"Landscape|风景|風景|풍경|Пейзаж"},
        {Style::Printmaking, u"Printmaking|Print|版画|版畫|판화|Гравюра"},
        {Style::Monet, u"Monet|莫奈|莫內|모네|Моне"},
        {Style::Picasso, u"Picasso|毕加索|畢卡索|피카소|Пикассо"},
        {Style::Rembrandt, u"Rembrandt|伦勃朗|林布蘭|렘브란트|Рембрандт"},
        {Style::Matisse, u"Matisse|马蒂斯|馬諦斯|마티스|Матисс"},
    };
    QHash<QString, Style> table;
    for (const auto &[style, list] : names) {
        const QStringList spellings = QString::fromUtf16(list).split(QLatin1Char('|'));
        for (const QString &name : spellings) {
            table.insert(nameKey(name).compact, style);
        }
    }
    return table;
}

} // namespace

Style styleNamed(const QString &name)
{
    static const QHash<QString, Style> table = makeTable();
    return table.value(nameKey(name).compact, Style::Plain);
}

} // namespace tavro::assistantservice
