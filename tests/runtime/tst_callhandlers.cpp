// Handlers that end in an unusual way.

#include "machine/callhandlers.h"

#include <QTest>

#include <future>
#include <memory>
#include <stdexcept>

using namespace tavro::runtime;

class tst_CallHandlers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void handlerThatThrowsHasBeenLeft();
    void whatAHandlerHoldsMayUseTheHandlersAtItsEnd();
};

namespace {

/// Removes another handler when it goes.
struct Remover {
    CallHandlers &handlers;

    ~Remover() { handlers.remove("another"); }
};

void setHolding(CallHandlers &handlers, const std::shared_ptr<Remover> &remover)
{
    handlers.set("holding", [remover](const char *, const char *, unsigned int) {});
}

} // namespace

void tst_CallHandlers::handlerThatThrowsHasBeenLeft()
{
    CallHandlers handlers;
    handlers.set("Call", [](const char *, const char *, unsigned int) { throw std::runtime_error("no"); });
    QVERIFY_EXCEPTION_THROWN(handlers.call({"Call", {}}), std::runtime_error);
    // A handler that counts as entered would be waited for.
    std::async(std::launch::async, [&handlers] { handlers.remove("Call"); }).wait();
}

void tst_CallHandlers::whatAHandlerHoldsMayUseTheHandlersAtItsEnd()
{
    CallHandlers handlers;
    setHolding(handlers, std::make_shared<Remover>(Remover{handlers}));
    handlers.remove("holding");
    setHolding(handlers, std::make_shared<Remover>(Remover{handlers}));
    handlers.set("holding", [](const char *, const char *, unsigned int) {});
    setHolding(handlers, std::make_shared<Remover>(Remover{handlers}));
    handlers.clear();
}

QTEST_APPLESS_MAIN(tst_CallHandlers)
#include "tst_callhandlers.moc"
