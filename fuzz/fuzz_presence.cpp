// What machines tell each other about who serves. Each line is one message to a machine that may serve; the first byte
// says whether it is to be answered, and how late it comes.

#include "nats/grouppresence.h"
#include "support/checks.h"
#include "support/input.h"

namespace {

using namespace tavro::runtime;

/// The connection: nothing comes of it.
class Silence : public PresenceActions {
public:
    void announce(const PresenceMessage &) override { }
    void ask(const PresenceMessage &) override { }
    void answer(const std::string &to, const PresenceMessage &) override { demand(!to.empty()); }
    void listenToCalls(bool listen) override { listens = listen; }
    void show(const Presence &presence) override { shown = presence; }

    bool listens = false;
    Presence shown;
};

void hear(GroupPresence &group, const QByteArray &line, GroupPresence::Time &now)
{
    const auto message = PresenceMessage::fromText(line.mid(1).toStdString());
    const bool isQuestion = line.startsWith('?');
    now += std::chrono::milliseconds(line.isEmpty() ? 0 : line.at(0) & 0x7f) * 10;
    if (message) {
        demand(!message->name.empty() && PresenceMessage::printable(message->name) == message->name);
        group.heard(*message, isQuestion ? "reply" : "", now);
    }
    group.tick(now);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Silence actions;
    GroupPresence group({true, "5f", "this machine"}, std::chrono::milliseconds(500), actions);
    GroupPresence::Time now{};
    group.opened(now);
    for (const QByteArray &line : Input(data, size).rest().split('\n')) {
        hear(group, line, now);
        demand(actions.shown.serving == actions.listens);
    }
    return 0;
}
