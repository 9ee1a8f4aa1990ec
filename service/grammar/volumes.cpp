#include "grammar/volumes.h"

#include "grammar/numberwords.h"
#include "grammar/vocabulary.h"

#include <cmath>

namespace tavro::assistantservice {

namespace {

constexpr double percent = 0.01;

const Vocabulary &words()
{
    return Vocabulary::instance();
}

QString written(double value)
{
    return QString::number(value, 'g', 10);
}

void setPercent(Volume &volume, double value)
{
    volume.mentioned = true;
    if (value < 0 || value > 100) {
        volume.wrong = written(value) + QStringLiteral(" %");
    } else {
        volume.value = value * percent;
    }
}

// Without a percent sign "0.3" is a part of the whole and "30" means percent; "1" may be either.
void setBare(Volume &volume, const Number &number)
{
    if (number.value == 1 && !number.decimal) {
        volume.mentioned = true;
        volume.ambiguous = true;
        return;
    }
    const bool part = number.decimal && number.value >= 0 && number.value <= 1;
    setPercent(volume, part ? number.value / percent : number.value);
}

struct Percent {
    double value = 0.0;
    int length = 0;
    bool decibels = false;
};

Percent percentAt(const Clause &clause, int index)
{
    static const WordList hundredths(u"百分之");
    static const WordList tenths(u"成");
    static const WordList decibels(u"db|decibel|decibels|分贝|дб|децибел*|데시벨*");
    const Tokens &tokens = clause.tokens();
    const int prefix = clause.freeLengthAt(hundredths, index);
    const int start = index + prefix;
    if (!clause.isFree(start)) {
        return {};
    }
    const Number number = numberAt(tokens, start);
    const int end = start + number.length;
    if (number.length == 0) {
        return {};
    }
    if (prefix > 0) {
        return {number.value, prefix + number.length, false};
    }
    if (const int unit = clause.freeLengthAt(decibels, end)) {
        return {number.value, number.length + unit, true};
    }
    if (const int sign = clause.freeLengthAt(words().percent, end)) {
        return {number.value, number.length + sign, false};
    }
    const bool isTenths = tokens[start].kind == Token::Kind::Han && clause.freeLengthAt(tenths, end) == 1;
    return isTenths ? Percent{number.value * 10, number.length + 1, false} : Percent();
}

bool isFreeOf(const WordList &list, const Clause &clause, int index)
{
    return index >= 0 && clause.freeLengthAt(list, index) > 0;
}

// "By 10 %", and "lower it 10 %" where no "to" says that this is the new volume. The Russian "на 10 %" says both "by"
// and "at": the verb decides.
bool isChange(const Clause &clause, int begin, int end)
{
    static const WordList by(u"by");
    static const WordList toBefore(u"to|at|down to|up to|到|至|为|成|до");
    static const WordList toBehind(u"으로|로");
    return isFreeOf(by, clause, begin - 1)
        || (clause.find(words().changeBy) >= 0 && !isFreeOf(toBefore, clause, begin - 1)
            && !isFreeOf(toBehind, clause, end));
}

// "From 50 % to 30 %": the first of them is the present volume.
bool isStart(const Clause &clause, int begin, int end)
{
    static const WordList from(u"from|从|由|с|со");
    static const WordList to(u"to|到|至|до|на|에서");
    return isFreeOf(from, clause, begin - 1) && isFreeOf(to, clause, end);
}

struct NamedValue {
    const WordList &list;
    double value;
};

// Half, full and so on count where they stand next to the word for volume; elsewhere they belong to a name.
bool takeNamedValue(Clause &clause, int keyword, Volume &volume)
{
    constexpr int reach = 4;
    const NamedValue values[] = {{words().quarter, 0.25}, {words().half, 0.5}, {words().full, 1.0}};
    for (const NamedValue &named : values) {
        for (int i = std::max(0, keyword - reach); i < std::min(clause.size(), keyword + reach + 1); ++i) {
            if (const int length = clause.freeLengthAt(named.list, i)) {
                clause.use(i, length);
                clause.useBefore(words().before, i);
                volume.value = named.value;
                return true;
            }
        }
    }
    return false;
}

bool takeSilence(Clause &clause, int keyword, Volume &volume)
{
    static const WordList off(u"off|заглушен*");
    const int before = keyword - 1;
    if (clause.isFree(before) && clause.freeLengthAt(words().silent, before) == 1) {
        clause.use(before, 1);
        clause.useBefore(words().before, before);
        volume.value = 0.0;
        return true;
    }
    const int behind = keyword + 1;
    if (behind < clause.size() && clause.freeLengthAt(off, behind) == 1) {
        clause.use(behind, 1);
        volume.value = 0.0;
        return true;
    }
    return false;
}

bool takeNumberNear(Clause &clause, int keyword, int keywordEnd, Volume &volume)
{
    int at = keywordEnd;
    while (at < clause.size()
           && (clause.freeLengthAt(words().preposition, at) == 1 || clause.freeLengthAt(words().set, at) == 1)) {
        ++at;
    }
    const Number behind = clause.isFree(at) ? numberAt(clause.tokens(), at) : Number();
    if (behind.length > 0 && !behind.ordinal) {
        clause.use(keywordEnd, at + behind.length - keywordEnd);
        setBare(volume, behind);
        return true;
    }
    const Number before = clause.isFree(keyword - 1) ? numberAt(clause.tokens(), keyword - 1) : Number();
    if (before.length == 1 && !before.ordinal) {
        clause.use(keyword - 1, 1);
        clause.useBefore(words().before, keyword - 1);
        setBare(volume, before);
        return true;
    }
    return false;
}

void takeKeyword(Clause &clause, int keyword, Volume &volume)
{
    const int length = clause.freeLengthAt(words().volume, keyword);
    volume.mentioned = true;
    if (!volume.isSettled()) {
        takeNamedValue(clause, keyword, volume) || takeSilence(clause, keyword, volume)
            || takeNumberNear(clause, keyword, keyword + length, volume);
    }
    clause.use(keyword, length);
    clause.useBefore(words().before, keyword);
    if (keyword + length < clause.size()) {
        clause.useFrom(words().preposition, clause.useFrom(words().after, keyword + length));
    }
}

void takeMute(Clause &clause, Volume &volume)
{
    static const WordList muted(u"muted|silently|без звука");
    const WordList &list = clause.find(muted) >= 0 ? muted : words().mute;
    const int at = clause.find(list);
    if (at < 0 || volume.isSettled()) {
        return;
    }
    clause.use(at, clause.freeLengthAt(list, at));
    clause.useBefore(words().before, at);
    volume.mentioned = true;
    volume.value = 0.0;
}

void takePercentAt(Clause &clause, int index, const Percent &found, Volume &volume)
{
    if (!isStart(clause, index, index + found.length)) {
        volume.relative = isChange(clause, index, index + found.length);
        setPercent(volume, found.value);
    }
    if (found.decibels) {
        volume.value.reset();
        volume.wrong = written(found.value) + QStringLiteral(" dB");
    }
    clause.use(index, found.length);
    clause.useBefore(words().before, index);
}

} // namespace

Volume takePercent(Clause &clause)
{
    Volume volume;
    for (int i = 0; i < clause.size() && !volume.isSettled(); ++i) {
        const Percent found = clause.isFree(i) ? percentAt(clause, i) : Percent();
        if (found.length > 0) {
            takePercentAt(clause, i, found, volume);
        }
    }
    return volume;
}

void takeVolumeWords(Clause &clause, Volume &volume)
{
    takeMute(clause, volume);
    for (int at = clause.find(words().volume); at >= 0; at = clause.find(words().volume, at + 1)) {
        takeKeyword(clause, at, volume);
    }
}

void takeBareVolume(Clause &clause, Volume &volume)
{
    for (int i = 0; i < clause.size() && !volume.isSettled(); ++i) {
        if (!clause.isFree(i)) {
            continue;
        }
        // "大一点" holds a number that is none.
        if (clause.freeLengthAt(words().relative, i) > 1) {
            i += clause.freeLengthAt(words().relative, i) - 1;
            continue;
        }
        takeNamedValue(clause, i, volume);
        const Number number = clause.isFree(i) ? numberAt(clause.tokens(), i) : Number();
        if (number.length > 0 && !number.ordinal && !volume.isSettled()) {
            volume.relative = isChange(clause, i, i + number.length);
            clause.use(i, number.length);
            setBare(volume, number);
        }
    }
}

} // namespace tavro::assistantservice
