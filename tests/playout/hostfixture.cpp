#include "playout/hostfixture.h"

#include "playout/samplefiles.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

namespace tavro::testsupport {

QPointer<aiassistant::AiController> HostFixture::controller;
QString HostFixture::panelSheet;

namespace {

QWidget *makeStandIn(aiassistant::AiController &controller, const QString &styleSheet)
{
    HostFixture::controller = &controller;
    HostFixture::panelSheet = styleSheet;
    auto *const panel = new QLineEdit;
    panel->setObjectName(QStringLiteral("panel"));
    panel->setFixedWidth(800);
    return panel;
}

} // namespace

HostFixture::HostFixture()
{
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    writePicture(media.filePath(QStringLiteral("market.png")), Qt::green);
    writePicture(media.filePath(QStringLiteral("harbour.png")), Qt::red);
    copySample(QStringLiteral("station ident.gif"), media.path());
    options.service = server.url();
    options.mediaFolder = media.path();
    options.language = QStringLiteral("en");
    options.role = playout::Role::Local;
    options.themeFile = QStringLiteral(":/aiassistant/theme/default_aiassistant.theme");
    options.timeout = std::chrono::seconds(60);
    options.tick = std::chrono::seconds(1);
    options.settingsFile = data.filePath(QStringLiteral("playout.ini"));
}

HostFixture::~HostFixture() = default;

bool HostFixture::start()
{
    host.reset();
    host = std::make_unique<playout::Host>(options, makeStandIn);
    host->window().show();
    host->window().activateWindow();
    return QTest::qWaitForWindowActive(&host->window());
}

QString HostFixture::labelText(const char *name) const
{
    return child<QLabel>(name).text();
}

QString HostFixture::log() const
{
    return child<QPlainTextEdit>("logLines").toPlainText();
}

} // namespace tavro::testsupport
