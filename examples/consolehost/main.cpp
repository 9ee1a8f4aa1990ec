#include "assistant.h"
#include "console.h"
#include "conversation.h"
#include "hostkit/environment.h"
#include "hostkit/stopsignals.h"
#include "lineinput.h"
#include "mediafolder.h"
#include "optionreader.h"

#include <QGuiApplication>
#include <QStringList>

#include <memory>

using namespace tavro::consolehost;
using namespace tavro::hostkit;

namespace {

constexpr int signalStatus = 128;

// An answer that nobody could read is none.
int unlessLost(int status)
{
    if (console::isWritten())
        return status;
    console::message(QStringLiteral("standard output cannot be written"));
    return status == Answered ? Failed : status;
}

void askAll(Conversation &conversation, const Options &options)
{
    for (const Step &question : options.questions)
        conversation.add(question);
    conversation.endInput();
}

std::unique_ptr<LineInput> readLines(Conversation &conversation, const Options &options)
{
    auto input = std::make_unique<LineInput>();
    QObject::connect(input.get(), &LineInput::sigLine, &conversation,
                     [&](const QString &line) { conversation.add(readStep(line, options.picture)); });
    QObject::connect(input.get(), &LineInput::sigEnded, &conversation, &Conversation::endInput);
    return input;
}

int run(const Options &options)
{
    const MediaLibrary library = readMediaFolder(options.mediaFolder);
    Assistant assistant(options, library);
    Conversation conversation(assistant, options, library);
    QObject::connect(&conversation, &Conversation::sigFinished, qApp, &QCoreApplication::exit);
    const StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::sigReceived, qApp,
                     [](int number) { QCoreApplication::exit(signalStatus + number); });
    std::unique_ptr<LineInput> input;
    if (options.isInteractive())
        input = readLines(conversation, options);
    else
        askAll(conversation, options);
    const int status = QCoreApplication::exec();
    assistant.shutDown();
    return status;
}

// UTF-8 in every locale, as all that the program reads and writes.
int explain(const OptionReader &reader)
{
    if (!reader.isWrong()) {
        console::text(reader.text());
        return unlessLost(Answered);
    }
    console::message(reader.text());
    console::message(QStringLiteral("--help lists the options"));
    return Failed;
}

} // namespace

int main(int argc, char *argv[])
{
    prepareEnvironment();
    const QStringList arguments = toStrings(argc, argv);
    // Qt gets the program's name only: it would take options such as --style for itself.
    int nameOnly = 1;
    const QGuiApplication application(nameOnly, argv);
    QCoreApplication::setApplicationName(QStringLiteral("consolehost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CONSOLEHOST_VERSION));

    OptionReader reader;
    const auto options = reader.read(arguments);
    if (!options)
        return explain(reader);
    const int status = run(*options);
    // What clear() left to the event loop, which does not run any more.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return unlessLost(status);
}
