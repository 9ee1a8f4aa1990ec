#pragma once

#include "widgets/mainwidget.h"

namespace tavro::aiassistant {

class AnswerWidget;

/// The shown panel, in its style and in English, with a conversation that has been laid out and painted.
class Conversation {
public:
    /// One of at least @p items items, made once and kept: it takes long to make, and what is done to it must be
    /// undone.
    static Conversation &ofAtLeast(int items);

    explicit Conversation(int items);

    void fill(int items); ///< adds so many questions

    /// What the event loop does before it sleeps; the paint that it would delay is asked for.
    void settle();

    static ChatItemContext question();
    static QString sheet();

    MainWidget panel;
    AnswerWidget &list;
};

} // namespace tavro::aiassistant
