#include "grammar/playback.h"

#include "grammar/clausereader.h"
#include "grammar/sentence.h"

namespace tavro::assistantservice {

namespace {

// The panel takes 200 characters. Reading takes time that grows with the square of the length, so that a text without
// end must not get this far.
constexpr int longestSentence = 400;
constexpr int longestPrompt = 1000;

// "Play X on layer 1 and set the volume to 30 %": the volume is that of the play request before.
bool completesPlay(const ClauseMeaning &meaning, const Understanding &sofar)
{
    return meaning.intent.action == Intent::Action::SetVolume && meaning.intent.volume
        && meaning.intent.places.isEmpty() && !meaning.intent.everyLayer && meaning.problem == Problem::NoLayer
        && !sofar.intents.isEmpty() && sofar.intents.last().action == Intent::Action::Play;
}

void takeIn(const ClauseMeaning &meaning, Understanding &understanding)
{
    if (completesPlay(meaning, understanding)) {
        understanding.intents.last().volume = meaning.intent.volume;
        return;
    }
    understanding.intents.append(meaning.intent);
    if (meaning.problem != Problem::None && understanding.problem == Problem::None) {
        understanding.problem = meaning.problem;
        understanding.troubled = understanding.intents.size() - 1;
        understanding.phrase = meaning.phrase;
        understanding.candidates = meaning.candidates;
    }
}

} // namespace

Understanding understandPlayback(const QString &sentence, const MediaNames &names)
{
    if (sentence.size() > longestSentence) {
        return {};
    }
    Tokens tokens = tokenize(sentence);
    quoteWholeNames(tokens, names);
    if (isQuestion(tokens)) {
        return {};
    }
    const ClauseReader reader(sentence, names);
    const QVector<Tokens> clauses = splitClauses(tokens);
    Understanding understanding;
    for (const Tokens &clause : clauses) {
        const bool afterPlay =
            !understanding.intents.isEmpty() && understanding.intents.last().action == Intent::Action::Play;
        const ClauseMeaning meaning = reader.read(clause, afterPlay);
        if (meaning.understood) {
            takeIn(meaning, understanding);
        }
    }
    return understanding;
}

Understanding understandPictureWish(const QString &prompt)
{
    if (prompt.size() > longestPrompt) {
        return {};
    }
    const QVector<MediaItem> noMedia;
    const MediaNames noNames(noMedia);
    const ClauseReader reader(prompt, noNames);
    const QVector<Tokens> tails = tailsOf(tokenize(prompt));
    for (const Tokens &tail : tails) {
        const ClauseMeaning meaning = reader.readPictureWish(tail);
        if (meaning.understood) {
            Understanding understanding;
            takeIn(meaning, understanding);
            return understanding;
        }
    }
    return {};
}

} // namespace tavro::assistantservice
