#include "grammar/playback.h"

#include "grammar/clausereader.h"
#include "grammar/numberwords.h"
#include "grammar/sentence.h"
#include "grammar/vocabulary.h"
#include "grammar/wholenames.h"
#include "grammar/wordruns.h"

namespace tavro::assistantservice {

namespace {

// The panel takes 200 characters. Reading takes time that grows with the square of the length, so that a text without
// end must not get this far.
constexpr int longestSentence = 400;
constexpr int longestPrompt = 1000;
// Each part may look through the whole media list.
constexpr int mostClauses = 12;

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

std::optional<Intent::Action> actionBefore(const Understanding &understanding)
{
    return understanding.intents.isEmpty() ? std::nullopt : std::make_optional(understanding.intents.last().action);
}

// A part that asks for something nobody understood, or makes a condition of the rest: then nothing is done.
class OpenParts {
public:
    explicit OpenParts(const QString &sentence)
        : m_sentence(sentence)
    { }

    void add(const Tokens &clause, bool first)
    {
        const Vocabulary &v = Vocabulary::instance();
        const Tokens rest = unexplained({&v.filler, &v.polite, &v.joiner, &v.preposition}, clause);
        const bool timed = v.timed.occursIn(rest);
        bool counts = timed || !first;
        for (int i = 0; i < rest.size(); ++i) {
            counts = counts || numberAt(rest, i).length > 0;
        }
        if (counts && !rest.isEmpty() && m_problem == Problem::None) {
            m_problem = timed ? Problem::Timed : Problem::Unclear;
            m_phrase = writtenText(m_sentence, clause);
        }
    }

    void applyTo(Understanding &understanding) const
    {
        if (m_problem != Problem::None && !understanding.intents.isEmpty() && understanding.problem == Problem::None) {
            understanding.problem = m_problem;
            understanding.troubled = 0;
            understanding.phrase = m_phrase;
        }
    }

private:
    const QString &m_sentence;
    Problem m_problem = Problem::None;
    QString m_phrase;
};

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
    if (clauses.size() > mostClauses) {
        return understanding;
    }
    OpenParts open(sentence);
    for (int i = 0; i < clauses.size(); ++i) {
        const ClauseMeaning meaning = reader.read(clauses[i], actionBefore(understanding));
        if (meaning.understood) {
            takeIn(meaning, understanding);
        } else {
            open.add(clauses[i], i == 0);
        }
    }
    open.applyTo(understanding);
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
