#include "builtin/wording.h"

#include "pictures/subject.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace tavro::assistantservice {

namespace {

constexpr int listedCandidates = 5;
constexpr int longestName = 80;

using Values = std::initializer_list<std::pair<const char *, QString>>;

// One pass from left to right, so that a name that holds "{where}" stays as it is.
QString filled(const char16_t *phrase, Values values)
{
    const QString text = QString::fromUtf16(phrase);
    QString result;
    for (int at = 0; at < text.size();) {
        const int open = text.indexOf(QLatin1Char('{'), at);
        const int close = open < 0 ? -1 : text.indexOf(QLatin1Char('}'), open);
        if (close < 0) {
            return result + text.mid(at);
        }
        result += text.midRef(at, open - at);
        const QStringRef key = text.midRef(open + 1, close - open - 1);
        for (const auto &[name, value] : values) {
            result += key == QLatin1String(name) ? value : QString();
        }
        at = close + 1;
    }
    return result;
}

QString shortened(const QString &name)
{
    return name.size() <= longestName ? name : name.left(longestName - 1) + QChar(0x2026);
}

class Speaker {
public:
    Speaker(const Phrases &phrases, const MediaNames &names)
        : m_phrases(phrases)
        , m_names(names)
    { }

    QString done(const Intent &intent) const
    {
        switch (intent.action) {
        case Intent::Action::Play:
            return playing(intent);
        case Intent::Action::Stop:
            return filled(intent.everyLayer ? m_phrases.stopEvery : m_phrases.stop,
                          {{"where", where(intent.places)}, {"places", places(intent.places)}});
        case Intent::Action::SetVolume:
            break;
        }
        return settingVolume(intent);
    }

    QString list(const QVector<int> &candidates) const
    {
        QStringList shown;
        for (int i = 0; i < std::min(candidates.size(), listedCandidates); ++i) {
            shown.append(QStringLiteral("%1. %2").arg(i + 1).arg(candidateName(candidates, i)));
        }
        const int more = candidates.size() - shown.size();
        const QString rest = more > 0 ? filled(m_phrases.moreMedia, {{"count", QString::number(more)}}) : QString();
        return shown.join(QString::fromUtf16(m_phrases.listSeparator)) + rest;
    }

private:
    QString playing(const Intent &intent) const
    {
        return filled(intent.generatedPicture ? m_phrases.playPicture : m_phrases.play,
                      {{"name", intent.media < 0 ? QString() : shortened(m_names.item(intent.media).name)},
                       {"where", where(intent.places)},
                       {"volume", atVolume(intent)}});
    }

    QString settingVolume(const Intent &intent) const
    {
        const bool mute = *intent.volume == 0.0;
        const char16_t *one = mute ? m_phrases.mute : m_phrases.setVolume;
        const char16_t *every = mute ? m_phrases.muteEvery : m_phrases.setVolumeEvery;
        return filled(
            intent.everyLayer ? every : one,
            {{"where", where(intent.places)}, {"places", places(intent.places)}, {"percent", percent(*intent.volume)}});
    }

    QString atVolume(const Intent &intent) const
    {
        if (!intent.volume) {
            return {};
        }
        return *intent.volume == 0.0 ? QString::fromUtf16(m_phrases.muted)
                                     : filled(m_phrases.atVolume, {{"percent", percent(*intent.volume)}});
    }

    static QString percent(double volume) { return QString::number(std::round(volume * 1000) / 10, 'g', 4); }

    QString where(const Places &where) const
    {
        const QString all = places(where);
        return all.isEmpty() ? all : filled(m_phrases.where, {{"places", all}});
    }

    QString places(const Places &places) const
    {
        QStringList parts;
        const auto add = [&](const QVector<int> &numbers, const char16_t *one, const char16_t *several) {
            if (!numbers.isEmpty()) {
                parts.append(filled(numbers.size() == 1 ? one : several, {{"numbers", joined(numbers)}}));
            }
        };
        add(places.programs, m_phrases.program, m_phrases.programs);
        add(places.outputs, m_phrases.output, m_phrases.outputs);
        add(places.layers, m_phrases.layer, m_phrases.layers);
        return parts.join(QString::fromUtf16(m_phrases.placeSeparator));
    }

    QString joined(const QVector<int> &numbers) const
    {
        QString text = QString::number(numbers.first());
        for (int i = 1; i < numbers.size(); ++i) {
            const bool last = i + 1 == numbers.size();
            text += QString::fromUtf16(last ? m_phrases.lastSeparator : m_phrases.listSeparator);
            text += QString::number(numbers[i]);
        }
        return text;
    }

    // Items of the same name are told apart by their ids.
    QString candidateName(const QVector<int> &candidates, int index) const
    {
        const MediaItem &item = m_names.item(candidates[index]);
        const auto same = [&](int other) { return m_names.item(other).name == item.name; };
        const bool several = std::count_if(candidates.begin(), candidates.end(), same) > 1;
        return several ? QStringLiteral("%1 (%2)").arg(shortened(item.name), item.id) : shortened(item.name);
    }

    const Phrases &m_phrases;
    const MediaNames &m_names;
};

QString perhaps(const Phrases &phrases, const Speaker &speaker, const Understanding &understanding)
{
    return understanding.candidates.isEmpty()
        ? QString()
        : filled(phrases.similarMedia, {{"list", speaker.list(understanding.candidates)}});
}

QString unknownMedia(const Phrases &phrases, const Speaker &speaker, const Understanding &understanding, int mediaCount)
{
    if (mediaCount == 0) {
        return QString::fromUtf16(phrases.emptyLibrary);
    }
    return filled(phrases.unknownMedia, {{"phrase", shortened(understanding.phrase)}})
        + perhaps(phrases, speaker, understanding);
}

QString noMedia(const Phrases &phrases, const Speaker &speaker, const Understanding &understanding, int mediaCount)
{
    if (mediaCount == 0) {
        return QString::fromUtf16(phrases.emptyLibrary);
    }
    return QString::fromUtf16(phrases.noMedia) + perhaps(phrases, speaker, understanding);
}

const char16_t *wrongPlace(const Phrases &phrases, PlaceKind kind)
{
    return kind == PlaceKind::Layer  ? phrases.wrongLayer
        : kind == PlaceKind::Program ? phrases.wrongProgram
                                     : phrases.wrongOutput;
}

QString trouble(const Phrases &phrases, const Speaker &speaker, const Understanding &understanding, int mediaCount)
{
    const Intent &intent = understanding.intents[understanding.troubled];
    const QString phrase = shortened(understanding.phrase);
    switch (understanding.problem) {
    case Problem::NoMedia:
        return noMedia(phrases, speaker, understanding, mediaCount);
    case Problem::SeveralMedia:
        return filled(phrases.severalMedia, {{"phrase", phrase}, {"list", speaker.list(understanding.candidates)}});
    case Problem::UnknownMedia:
        return unknownMedia(phrases, speaker, understanding, mediaCount);
    case Problem::NoLayer:
        return QString::fromUtf16(intent.action == Intent::Action::Stop ? phrases.noLayerToStop
                                                                        : phrases.noLayerForVolume);
    case Problem::NoVolume:
        return QString::fromUtf16(phrases.noVolume);
    case Problem::RelativeVolume:
        return QString::fromUtf16(phrases.relativeVolume);
    case Problem::WrongVolume:
        return filled(phrases.wrongVolume, {{"phrase", phrase}});
    case Problem::WrongPlace:
        return filled(wrongPlace(phrases, intent.places.wrongKind), {{"phrase", phrase}});
    case Problem::Unsupported:
        return QString::fromUtf16(phrases.unsupported);
    case Problem::Timed:
        return QString::fromUtf16(phrases.timed);
    case Problem::Unclear:
        return filled(phrases.unclear, {{"phrase", phrase}});
    case Problem::Negated:
    case Problem::None:
        break;
    }
    return QString::fromUtf16(phrases.negated);
}

bool asksBack(Problem problem)
{
    return problem == Problem::SeveralMedia || problem == Problem::NoLayer || problem == Problem::NoVolume
        || problem == Problem::NoMedia || problem == Problem::RelativeVolume;
}

} // namespace

QString describe(const Understanding &understanding, const MediaNames &names, int mediaCount, Language language)
{
    const Phrases &phrases = phrasesFor(language);
    const Speaker speaker(phrases, names);
    if (understanding.problem != Problem::None) {
        const bool others = understanding.intents.size() > 1 && asksBack(understanding.problem);
        return trouble(phrases, speaker, understanding, mediaCount)
            + (others ? QString::fromUtf16(phrases.nothingDone) : QString());
    }
    QStringList sentences;
    for (const Intent &intent : understanding.intents) {
        sentences.append(speaker.done(intent));
    }
    return sentences.join(QString::fromUtf16(phrases.sentenceSeparator));
}

QString explainNoModel(Language language, bool switches, const QString &example)
{
    const Phrases &phrases = phrasesFor(language);
    return QString::fromUtf16(phrases.noModel) + (switches ? QString::fromUtf16(phrases.noModelSwitches) : QString())
        + filled(phrases.abilities, {{"example", shortened(example)}});
}

QString describePicture(const QString &prompt, const QString &style)
{
    const Language language = detectLanguage(prompt);
    const bool chinese = language == Language::ChineseSimplified || language == Language::ChineseTraditional;
    const QString scene = describeSubject(subjectOf(prompt), chinese);
    return filled(phrasesFor(language).picture,
                  {{"style", style.isEmpty() ? QStringLiteral("-") : shortened(style)}, {"scene", scene}});
}

} // namespace tavro::assistantservice
