#include "playoutonscreen.h"

#include "playout/samplefiles.h"
#include "support/waiting.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace tavro::testsupport {

namespace {

// The script gives up earlier than that, and says why.
constexpr std::chrono::milliseconds limit{150000};

} // namespace

PlayoutOnScreen::PlayoutOnScreen(const VirtualScreen &screen)
    : m_screen(screen)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("DISPLAY"), m_screen.display());
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("QT_SCALE_FACTOR"));
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QLatin1String(name), m_folder.path());
    m_program.setProcessEnvironment(environment);
    m_program.setWorkingDirectory(m_folder.path());
}

PlayoutOnScreen::~PlayoutOnScreen()
{
    m_program.kill();
    m_program.waitForFinished();
}

bool PlayoutOnScreen::start(const QString &service, const QString &script)
{
    const QString media = file(QStringLiteral("media"));
    QFile steps(file(QStringLiteral("test.play")));
    if (!QDir(m_folder.path()).mkdir(QStringLiteral("media"))
        || copySample(QStringLiteral("harbour clip.gif"), media).isEmpty() || !steps.open(QFile::WriteOnly))
        return false;
    steps.write(script.toUtf8());
    steps.close();
    m_program.start(QStringLiteral(PLAYOUT_PROGRAM),
                    {QStringLiteral("--service"), service, QStringLiteral("--media"), media, QStringLiteral("--script"),
                     steps.fileName()});
    return m_program.waitForStarted();
}

Control PlayoutOnScreen::nextControl()
{
    eventually([this] { return m_program.canReadLine() || m_program.state() == QProcess::NotRunning; }, limit);
    m_complaints += QString::fromUtf8(m_program.readAllStandardError());
    const QJsonObject told = QJsonDocument::fromJson(m_program.readLine()).object();
    const auto number = [&told](const char *name) { return told.value(QLatin1String(name)).toInt(); };
    return {told.value(QLatin1String("text")).toString(), told.value(QLatin1String("enabled")).toBool(),
            QRect(number("x"), number("y"), number("width"), number("height"))};
}

int PlayoutOnScreen::exitCode()
{
    const bool ended = eventually([this] { return m_program.state() == QProcess::NotRunning; }, limit);
    m_complaints += QString::fromUtf8(m_program.readAllStandardError());
    return ended && m_program.exitStatus() == QProcess::NormalExit ? m_program.exitCode() : -1;
}

} // namespace tavro::testsupport
