#include "grammar/mediachoice.h"

#include "grammar/korean.h"
#include "grammar/sentence.h"
#include "grammar/vocabulary.h"
#include "grammar/wordruns.h"

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

bool meansGeneratedPicture(const Tokens &rest)
{
    static const WordList madeHere(
        u"generated|generate|drew|drawn|painted|生成|画好|сгенерированн*|нарисованн*|созданн*|생성*");
    const Vocabulary &v = words();
    return !rest.isEmpty() && consistsOf({&v.generated, &v.picture, &v.filler, &v.pronoun, &v.polite}, rest)
        && (v.picture.occursIn(rest) || madeHere.occursIn(rest));
}

// An item may be named "It", but who says "play it" more likely speaks of another.
bool isPronoun(const Tokens &tokens)
{
    return !tokens.isEmpty() && consistsOf({&words().pronoun}, tokens);
}

} // namespace

MediaChoice::MediaChoice(const QString &sentence, const MediaNames &names)
    : m_sentence(sentence)
    , m_names(names)
{ }

void MediaChoice::choose(const Tokens &rest, ClauseMeaning &meaning) const
{
    const Tokens whole = withoutPauses(rest);
    const Tokens quoted = quotedOnly(whole);
    if (!quoted.isEmpty() && withoutFillers(whole).size() == quoted.size()) {
        search(quoted, meaning);
        return;
    }
    const Tokens named = trimmed(whole);
    if (isPronoun(whole)) {
        meaning.problem = Problem::NoMedia;
        meaning.candidates = findWhole(whole);
        return;
    }
    if (chooseWhole(whole, meaning) || chooseWhole(named, meaning)) {
        return;
    }
    if (meansGeneratedPicture(whole)) {
        meaning.intent.generatedPicture = true;
    } else if (named.isEmpty() || consistsOf({&words().pronoun, &words().filler, &words().polite}, named)) {
        meaning.problem = Problem::NoMedia;
    } else {
        search(named, meaning);
    }
}

bool MediaChoice::isNamed(const Tokens &tokens) const
{
    return !find(tokens).found.isEmpty();
}

bool MediaChoice::isWholeName(const Tokens &tokens) const
{
    return !findWhole(tokens).isEmpty();
}

QString MediaChoice::written(const Tokens &tokens) const
{
    return writtenText(m_sentence, tokens);
}

QVector<int> MediaChoice::findWhole(const Tokens &tokens) const
{
    const QString text = written(tokens);
    const QVector<int> found = m_names.findWhole(text);
    return found.isEmpty() ? m_names.findWhole(withoutParticle(text)) : found;
}

MediaMatch MediaChoice::find(const Tokens &tokens) const
{
    const QString text = written(tokens);
    MediaMatch match = m_names.find(text);
    const QString bare = withoutParticle(text);
    return match.found.isEmpty() && bare != text ? m_names.find(bare) : match;
}

bool MediaChoice::chooseWhole(const Tokens &tokens, ClauseMeaning &meaning) const
{
    const QVector<int> found = tokens.isEmpty() ? QVector<int>() : findWhole(tokens);
    if (found.size() == 1) {
        meaning.intent.media = found.first();
    } else if (found.size() > 1) {
        meaning.problem = Problem::SeveralMedia;
        meaning.candidates = found;
        meaning.phrase = written(tokens);
    }
    return !found.isEmpty();
}

void MediaChoice::search(const Tokens &tokens, ClauseMeaning &meaning) const
{
    meaning.phrase = written(tokens);
    MediaMatch match = find(tokens);
    const Tokens core = withoutFillers(tokens);
    if (match.found.isEmpty() && !core.isEmpty() && core.size() < tokens.size()) {
        const MediaMatch second = find(core);
        match = second.found.isEmpty() && second.similar.isEmpty() ? match : second;
    }
    if (match.found.size() == 1) {
        meaning.intent.media = match.found.first();
    } else {
        meaning.problem = match.found.isEmpty() ? Problem::UnknownMedia : Problem::SeveralMedia;
        meaning.candidates = match.found.isEmpty() ? match.similar : match.found;
    }
}

} // namespace tavro::assistantservice
