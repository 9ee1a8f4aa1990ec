#include "grammar/korean.h"

#include <QRegularExpression>
#include <QStringList>

namespace tavro::assistantservice {

bool isHangul(const Token &token)
{
    return token.text[0].script() == QChar::Script_Hangul;
}

QString withoutParticle(const QString &text)
{
    static const QStringList particles =
        QStringLiteral("에서 으로 이라는 라는 까지 을 를 은 는 이 가 도 만 에 로 의").split(QLatin1Char(' '));
    if (text.isEmpty() || text.back().script() != QChar::Script_Hangul) {
        return text;
    }
    for (const QString &particle : particles) {
        const int stem = text.size() - particle.size();
        if (stem > 0 && text.endsWith(particle) && text[stem - 1].isLetterOrNumber()) {
            return text.left(stem);
        }
    }
    return text;
}

int sinoKoreanNumber(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:([이삼사오육칠팔구])?(백))?(?:([이삼사오육칠팔구])?(십))?([일이삼사오육칠팔구])?$"));
    static const QString digits = QStringLiteral("영일이삼사오육칠팔구");
    const QRegularExpressionMatch match = form.match(text);
    const bool unit = !match.captured(2).isEmpty() || !match.captured(4).isEmpty();
    if (!match.hasMatch() || !unit) {
        return -1;
    }
    const auto part = [&](int digit, int unitGroup, int value) {
        const QString count = match.captured(digit);
        return match.captured(unitGroup).isEmpty() ? 0 : value * (count.isEmpty() ? 1 : digits.indexOf(count));
    };
    return part(1, 2, 100) + part(3, 4, 10)
        + std::max(0, match.captured(5).isEmpty() ? 0 : digits.indexOf(match.captured(5)));
}

} // namespace tavro::assistantservice
