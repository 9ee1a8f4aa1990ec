#include "builtin/conversation.h"

#include "grammar/numberwords.h"
#include "grammar/sentence.h"
#include "grammar/vocabulary.h"

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr int listedCandidates = 5;
constexpr int longestMemory = 4;

const Vocabulary &words()
{
    return Vocabulary::instance();
}

// Nothing but small words is left: the sentence was an answer and not a new subject.
bool isSpent(const Clause &clause)
{
    const Tokens rest = clause.rest();
    for (const Token &token : rest) {
        const bool small = token.kind == Token::Kind::Pause || words().filler.contains(token)
            || words().polite.contains(token) || words().preposition.contains(token) || words().volume.contains(token)
            || words().play.contains(token) || words().after.contains(token) || words().number.contains(token);
        if (!small) {
            return false;
        }
    }
    return true;
}

void addPlaces(const Places &more, Places &places)
{
    const auto replace = [](const QVector<int> &from, QVector<int> &to) {
        if (!from.isEmpty()) {
            to = from;
        }
    };
    replace(more.layers, places.layers);
    replace(more.programs, places.programs);
    replace(more.outputs, places.outputs);
    places.wrongNumber = more.wrongNumber;
    places.wrongKind = more.wrongKind;
}

// An answer to something that was asked back: places and volumes first, so that what is left is the choice itself.
struct Answer {
    explicit Answer(const QString &text)
        : clause(tokenize(text))
        , volume(takePercent(clause))
        , places(takePlaces(clause))
    { }

    Clause clause;
    Volume volume;
    Places places;
};

int chosenByNumber(Clause &clause, int count)
{
    for (int i = 0; i < clause.size(); ++i) {
        if (clause.freeLengthAt(words().last, i) > 0) {
            clause.use(i, clause.freeLengthAt(words().last, i));
            return isSpent(clause) ? count - 1 : -1;
        }
        const Number number = clause.isFree(i) ? numberAt(clause.tokens(), i) : Number();
        // "One" in "the second one" is no number.
        if (number.length > 0 && (number.ordinal || i + number.length >= clause.rest().size() || clause.size() <= 3)) {
            clause.use(i, number.length);
            const bool fits = number.isWhole() && number.value >= 1 && number.value <= count;
            return fits && isSpent(clause) ? static_cast<int>(number.value) - 1 : -1;
        }
    }
    return -1;
}

int chosenByName(const QString &text, const Clause &clause, const QVector<int> &candidates, const MediaNames &names)
{
    const QString spoken = writtenText(text, clause.rest());
    const QVector<int> found = names.find(spoken, candidates).found;
    return found.size() == 1 ? found.first() : -1;
}

bool saysYes(const Clause &clause)
{
    const Tokens rest = clause.rest();
    return !rest.isEmpty() && words().yes.lengthAt(rest, 0) > 0;
}

int chosenMedia(const QString &text, const Answer &answer, const QVector<int> &candidates, const MediaNames &names)
{
    Clause clause = answer.clause;
    const int count = std::min(candidates.size(), listedCandidates);
    const int number = chosenByNumber(clause, count);
    if (number >= 0) {
        return candidates[number];
    }
    if (candidates.size() == 1 && saysYes(answer.clause)) {
        return candidates.first();
    }
    return chosenByName(text, answer.clause, candidates, names);
}

bool completeMedia(const QString &text, const QVector<int> &candidates, const MediaNames &names, Intent &intent)
{
    Answer answer(text);
    takeVolumeWords(answer.clause, answer.volume);
    const int media = chosenMedia(text, answer, candidates, names);
    if (media < 0) {
        return false;
    }
    intent.media = media;
    addPlaces(answer.places, intent.places);
    intent.volume = answer.volume.value ? answer.volume.value : intent.volume;
    return true;
}

bool completeNamelessPlay(const QString &text, const MediaNames &names, Intent &intent)
{
    const Understanding named = understandPlayback(QStringLiteral("play ") + text, names);
    if (named.problem != Problem::None || named.intents.size() != 1) {
        return false;
    }
    const Intent &found = named.intents.first();
    intent.media = found.media;
    intent.generatedPicture = found.generatedPicture;
    addPlaces(found.places, intent.places);
    intent.volume = found.volume ? found.volume : intent.volume;
    return true;
}

bool completePlaces(const QString &text, PlaceKind kind, Intent &intent)
{
    Answer answer(text);
    const bool everything = answer.clause.find(words().everything) >= 0;
    if (answer.places.isEmpty() && !everything) {
        const Tokens rest = answer.clause.rest();
        const Number number = rest.isEmpty() ? Number() : numberAt(rest, 0);
        if (number.length == 0 || number.length != rest.size() || !number.isWhole() || number.value < 1) {
            return false;
        }
        answer.places.of(kind) = {static_cast<int>(number.value)};
    } else if (!everything && !isSpent(answer.clause)) {
        return false;
    }
    addPlaces(answer.places, intent.places);
    intent.everyLayer = everything && intent.action != Intent::Action::Play;
    return intent.places.wrongNumber.isEmpty();
}

bool completeVolume(const QString &text, Intent &intent)
{
    Answer answer(text);
    takeVolumeWords(answer.clause, answer.volume);
    takeBareVolume(answer.clause, answer.volume);
    const bool answered = answer.volume.value || !answer.places.isEmpty();
    if (!answered || answer.volume.relative || !isSpent(answer.clause)) {
        return false;
    }
    intent.volume = answer.volume.value ? answer.volume.value : intent.volume;
    addPlaces(answer.places, intent.places);
    return true;
}

Problem problemLeft(const Intent &intent)
{
    const bool needsLayer =
        intent.action != Intent::Action::Play && intent.places.layers.isEmpty() && !intent.everyLayer;
    if (intent.action == Intent::Action::SetVolume && !intent.volume) {
        return Problem::NoVolume;
    }
    return needsLayer ? Problem::NoLayer : Problem::None;
}

bool complete(Understanding &asked, const QString &text, const MediaNames &names)
{
    Intent &intent = asked.intents[asked.troubled];
    bool done = false;
    switch (asked.problem) {
    case Problem::SeveralMedia:
    case Problem::UnknownMedia:
        done = completeMedia(text, asked.candidates, names, intent);
        break;
    case Problem::NoMedia:
        done = (!asked.candidates.isEmpty() && completeMedia(text, asked.candidates, names, intent))
            || completeNamelessPlay(text, names, intent);
        break;
    case Problem::NoLayer:
    case Problem::WrongPlace:
        done = completePlaces(text, intent.places.wrongNumber.isEmpty() ? PlaceKind::Layer : intent.places.wrongKind,
                              intent);
        break;
    case Problem::NoVolume:
    case Problem::RelativeVolume:
    case Problem::WrongVolume:
        done = completeVolume(text, intent);
        break;
    default:
        break;
    }
    if (done) {
        asked.problem = problemLeft(intent);
    }
    return done;
}

// Each earlier message is understood only where the later one leaves something open.
Understanding understandAt(const QStringList &texts, int index, int memory, const MediaNames &names)
{
    Understanding current = understandPlayback(texts[index], names);
    const bool open = !current.isPlayback() || current.problem != Problem::None;
    if (!open || index == 0 || memory == 0 || isQuestion(tokenize(texts[index]))) {
        return current;
    }
    Understanding before = understandAt(texts, index - 1, memory - 1, names);
    const bool answered =
        before.problem != Problem::None && before.troubled >= 0 && complete(before, texts[index], names);
    return answered ? before : current;
}

} // namespace

Understanding understandConversation(const QVector<ChatMessage> &messages, const MediaNames &names)
{
    QStringList texts;
    for (const ChatMessage &message : messages) {
        if (!message.fromAssistant) {
            texts.append(message.content);
        }
    }
    return texts.isEmpty() ? Understanding() : understandAt(texts, texts.size() - 1, longestMemory, names);
}

} // namespace tavro::assistantservice
