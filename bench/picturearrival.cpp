// How long the panel is deaf while a large picture arrives and its thumbnail appears, beside decoding it in the GUI
// thread.

#include "aicontroller/aicontroller_p.h"
#include "answeringserver.h"
#include "eventloop.h"
#include "widgets/mainwidget.h"
#include "widgets/pixmapcelllabel.h"

#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QRandomGenerator>
#include <QTimer>

#include <algorithm>
#include <ctime>

namespace tavro::aiassistant {

namespace {

// Noisy, as a photograph: a plain picture would take no time.
QByteArray makePng()
{
    QImage image(3840, 2160, QImage::Format_RGB32);
    QRandomGenerator random(1);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto noise = static_cast<int>(random.generate() & 7U);
            image.setPixel(x, y, qRgb((x / 16 + noise) & 255, (y / 9 + noise) & 255, ((x + y) / 24 + noise) & 255));
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

const QByteArray &png()
{
    static const QByteArray bytes = makePng();
    return bytes;
}

double processorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Comes by whenever the event loop has nothing to do, and notes how long it was kept away.
class Watch {
public:
    Watch()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_clock.start();
        m_lastProcessor = processorSeconds();
        m_timer.start(0);
    }

    void look()
    {
        const qint64 clock = m_clock.nsecsElapsed();
        const double processor = processorSeconds();
        longest = std::max(longest, 1e-9 * static_cast<double>(clock - m_lastClock));
        longestProcessor = std::max(longestProcessor, processor - m_lastProcessor);
        m_lastClock = clock;
        m_lastProcessor = processor;
    }

    double longest = 0; ///< s
    double longestProcessor = 0; ///< s, of this thread's processor time

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_lastClock = 0;
    double m_lastProcessor = 0;
};

/// Sees the thumbnail being painted.
class PaintWitness : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<PixmapCellLabel *>(watched->parent()) != nullptr)
            seen = seen || qobject_cast<QLabel *>(watched) != nullptr;
        return false;
    }

    bool seen = false;
};

class Scene {
public:
    Scene()
        : m_server(png())
        , m_d(AiControllerAccess::of(m_controller))
    {
        m_controller.setDomain(m_server.address());
        m_controller.createTimer();
        m_panel.setAIController(&m_controller);
        m_panel.resize(800, 1000);
        m_panel.show();
        m_info.content = "a harbour";
    }

    // The watch sees everything from the answer's arrival on.
    void showPicture(Watch *watch)
    {
        PaintWitness witness;
        m_d.beginNewConversation();
        m_controller.textToGeneratePicture(m_info);
        processEventsUntil([this] { return !m_d.strReqId.isEmpty(); });
        if (watch != nullptr)
            watch->look();
        qApp->installEventFilter(&witness);
        m_d.slotOnTimeout();
        processEventsUntil([&witness] { return witness.seen; });
        if (watch != nullptr)
            watch->look();
        m_d.nTickCount = 0;
    }

    // The pictures' memory goes with the items.
    void clear()
    {
        m_panel.resetMainWidget();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

private:
    AnsweringServer m_server;
    AiController m_controller;
    std::remove_reference_t<decltype(AiControllerAccess::of(m_controller))> &m_d;
    MainWidget m_panel;
    PictureGenerateInfo m_info;
};

void pictureArrival(benchmark::State &state)
{
    Scene scene;
    scene.showPicture(nullptr);
    double processor = 0;
    for ([[maybe_unused]] auto iteration : state) {
        scene.clear();
        Watch watch;
        scene.showPicture(&watch);
        state.SetIterationTime(watch.longest);
        processor += watch.longestProcessor;
    }
    state.counters["processor_ms"] = benchmark::Counter(1e3 * processor, benchmark::Counter::kAvgIterations);
}

void decodeInPlace(benchmark::State &state)
{
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(QImage::fromData(png()));
}

BENCHMARK(pictureArrival)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeInPlace)->UseRealTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace tavro::aiassistant
