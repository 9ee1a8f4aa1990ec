#include <nats/natsruntime.h>

#include <QApplication>
#include <QImage>
#include <QPushButton>

#include <aicontroller/aicontroller.h>
#include <cstdio>
#include <inprocess/inprocessruntime.h>
#include <set>
#include <widgets/mainwidget.h>

namespace {

std::size_t colorsOf(const QImage &picture)
{
    std::set<QRgb> colors;
    for (int y = 0; y < picture.height(); y += 2) {
        for (int x = 0; x < picture.width(); x += 2)
            colors.insert(picture.pixel(x, y));
    }
    return colors.size();
}

// Options that cannot be used, so that it stays without a broker.
QString natsRefusal()
{
    tavro::runtime::NatsOptions options;
    options.group = "two words";
    const tavro::runtime::NatsRuntime runtime(tavro::runtime::Role::ProxyClient, options);
    QCoreApplication::processEvents();
    return runtime.connectionText();
}

} // namespace

// Shows the panel and says what is on it.
int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    tavro::runtime::InProcessBus bus;
    tavro::runtime::InProcessRuntime runtime(bus, tavro::runtime::Role::LocalExecutor);
    tavro::aiassistant::AiController controller;
    controller.setZVRuntime(&runtime);
    tavro::aiassistant::MainWidget panel;
    panel.setAIController(&controller);
    controller.loadTheme(":/aiassistant/theme/default_aiassistant.theme");
    controller.switchLanguage("zh_CN");
    panel.show();
    const auto *const send = panel.findChild<QPushButton *>("sendMsg");
    std::printf("button: %s\n", send ? qPrintable(send->text()) : "missing");
    const auto *const mode = panel.findChild<QPushButton *>("generateImage");
    std::printf("icon: %s\n",
                mode && !mode->icon().isNull() && !mode->icon().pixmap(16).isNull() ? "there" : "missing");
    const std::size_t colors = colorsOf(panel.grab().toImage());
    std::printf("colours: %zu\n", colors);
    std::printf("nats: %s\n", qPrintable(natsRefusal()));
    controller.clear();
    return send && colors > 20 ? 0 : 1;
}
