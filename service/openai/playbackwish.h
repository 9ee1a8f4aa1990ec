#pragma once

#include "grammar/playback.h"

namespace tavro::assistantservice {

/// What the operator's own words can ask the playout for. It stands between a model and the air: a model may be talked
/// into a call by a media item's name, and what the operator has not asked for is not carried out.
///
/// Counted are his newest message and, where that is a short answer without a verb ("the second one", "layer 2"), those
/// before it; after a plain "yes" also what the assistant asked. Words count that can mean a kind of action, in any of
/// the languages, except where they are negated, in quotation marks, or part of a media item's name. A question asks
/// for an answer and for nothing else.
class PlaybackWish {
public:
    PlaybackWish(const QVector<ChatMessage> &messages, const MediaNames &names);

    /// Whether he can have meant it. A play also counts where he just names that item or a place, and every layer is
    /// meant only where he says so or gives no number.
    bool covers(const Intent &intent) const;

private:
    void read(int index, int memory);
    void take(const QString &text);
    bool isNamed(const Intent &intent) const;

    const QVector<ChatMessage> &m_messages;
    const MediaNames &m_names;
    bool m_play = false;
    bool m_stop = false;
    bool m_volume = false;
    bool m_place = false;
    bool m_level = false;
    bool m_number = false;
    bool m_everything = false;
    /// What he said, as names are compared.
    QString m_said;
};

/// The first of the intents that the wish does not cover, or -1.
int firstUnasked(const QVector<Intent> &intents, const PlaybackWish &wish);

} // namespace tavro::assistantservice
