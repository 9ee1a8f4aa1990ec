#include "openai/toolcalls.h"

#include "openai/plaintext.h"

#include <QVariant>

#include <algorithm>
#include <cmath>

namespace tavro::assistantservice {

namespace {

constexpr int mostCalls = 20;
constexpr int highestNumber = 9999;
constexpr int longestPhrase = 100;

bool isGiven(const QJsonValue &value)
{
    return !value.isUndefined() && !value.isNull();
}

// Models write numbers as texts now and then.
std::optional<double> numberIn(const QJsonValue &value)
{
    if (value.isDouble()) {
        return value.toDouble();
    }
    bool ok = false;
    const double number = value.toString().toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

QString written(const QJsonValue &value)
{
    return value.isDouble() ? QString::number(value.toDouble(), 'g', 15) : value.toVariant().toString();
}

// Reads one call into an intent. The first thing that is wrong is the problem.
class CallReader {
public:
    CallReader(const ToolCall &call, const MediaNames &names, const QVector<MediaItem> &media,
               const QVector<ShownItem> &shown)
        : m_call(call)
        , m_names(names)
        , m_media(media)
        , m_shown(shown)
    { }

    void read(Understanding &understanding)
    {
        readTool();
        understanding.intents.append(m_intent);
        if (m_problem != Problem::None && understanding.problem == Problem::None) {
            understanding.problem = m_problem;
            understanding.troubled = understanding.intents.size() - 1;
            understanding.phrase = m_phrase;
            understanding.candidates = m_candidates;
        }
    }

private:
    void readTool()
    {
        if (m_call.name == QLatin1String("play_media")) {
            readMedia();
            readVolume();
        } else if (m_call.name == QLatin1String("play_generated_picture")) {
            m_intent.generatedPicture = true;
            readVolume();
        } else if (m_call.name == QLatin1String("stop_layer")) {
            m_intent.action = Intent::Action::Stop;
            readEveryLayer();
        } else if (m_call.name == QLatin1String("set_volume")) {
            m_intent.action = Intent::Action::SetVolume;
            readEveryLayer();
            readVolume();
            fail(m_intent.volume ? Problem::None : Problem::NoVolume, {});
        } else {
            fail(Problem::Unsupported, m_call.name);
        }
        readPlaces();
        const bool nowhere = m_intent.places.isEmpty() && !m_intent.everyLayer;
        fail(nowhere && m_intent.action != Intent::Action::Play ? Problem::NoLayer : Problem::None, {});
        fail(m_call.isReadable ? Problem::None : Problem::Unsupported, {});
    }

    QJsonValue argument(const char *name) const { return m_call.arguments.value(QLatin1String(name)); }

    // An id that the library does not have may be a name: small models mix the two up.
    void readMedia()
    {
        const QString id = argument("media_id").toString();
        m_intent.media = id.isEmpty() ? -1 : indexOf(id);
        if (m_intent.media >= 0) {
            return;
        }
        const QString name = argument("media_name").toString();
        const QString spoken = name.isEmpty() ? id : name;
        if (spoken.trimmed().isEmpty()) {
            fail(Problem::NoMedia, {});
            return;
        }
        const MediaMatch match = m_names.find(spoken);
        if (match.found.size() == 1) {
            m_intent.media = match.found.first();
            return;
        }
        fail(match.found.isEmpty() ? Problem::UnknownMedia : Problem::SeveralMedia, spoken);
        m_candidates = match.found.isEmpty() ? match.similar : match.found;
    }

    int indexOf(const QString &id) const
    {
        const auto shown = std::find_if(m_shown.begin(), m_shown.end(), [&](const ShownItem &i) { return i.id == id; });
        if (shown != m_shown.end()) {
            return shown->index;
        }
        const auto item = std::find_if(m_media.begin(), m_media.end(), [&](const MediaItem &i) { return i.id == id; });
        return item == m_media.end() ? -1 : static_cast<int>(item - m_media.begin());
    }

    void readVolume()
    {
        const QJsonValue value = argument("volume");
        if (!isGiven(value)) {
            return;
        }
        const std::optional<double> volume = numberIn(value);
        if (volume && *volume >= 0.0 && *volume <= 1.0) {
            m_intent.volume = volume;
        } else {
            fail(Problem::WrongVolume, written(value));
        }
    }

    void readEveryLayer() { m_intent.everyLayer = argument("every_layer").toBool(); }

    void readPlaces()
    {
        readPlace("layer_id", PlaceKind::Layer);
        readPlace("program_id", PlaceKind::Program);
        readPlace("output_id", PlaceKind::Output);
    }

    void readPlace(const char *name, PlaceKind kind)
    {
        const QJsonValue value = argument(name);
        if (!isGiven(value)) {
            return;
        }
        const std::optional<double> number = numberIn(value);
        if (number && *number >= 1 && *number <= highestNumber && *number == std::floor(*number)) {
            m_intent.places.of(kind).append(static_cast<int>(*number));
        } else if (m_problem == Problem::None) {
            m_intent.places.wrongKind = kind;
            fail(Problem::WrongPlace, written(value));
        }
    }

    void fail(Problem problem, const QString &phrase)
    {
        if (m_problem == Problem::None) {
            m_problem = problem;
            m_phrase = plainLine(phrase, longestPhrase);
        }
    }

    const ToolCall &m_call;
    const MediaNames &m_names;
    const QVector<MediaItem> &m_media;
    const QVector<ShownItem> &m_shown;
    Intent m_intent;
    Problem m_problem = Problem::None;
    QString m_phrase;
    QVector<int> m_candidates;
};

} // namespace

Understanding understandCalls(const QVector<ToolCall> &calls, const MediaNames &names, const QVector<MediaItem> &media,
                              const QVector<ShownItem> &shown)
{
    Understanding understanding;
    const QVector<ToolCall> considered = calls.mid(0, mostCalls);
    for (const ToolCall &call : considered) {
        CallReader(call, names, media, shown).read(understanding);
    }
    if (calls.size() > mostCalls && understanding.problem == Problem::None) {
        understanding.problem = Problem::Unsupported;
        understanding.troubled = 0;
    }
    return understanding;
}

} // namespace tavro::assistantservice
