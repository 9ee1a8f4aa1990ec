#include "virtualscreen.h"

#include "support/waiting.h"

#include <QFile>
#include <QtEndian>

namespace tavro::testsupport {

namespace {

constexpr std::chrono::milliseconds startLimit{60000};

// The head of a dump of a window: big-endian numbers of 32 bits, of which these are read.
class DumpHead {
public:
    explicit DumpHead(const QByteArray &dump)
        : m_dump(dump)
    { }

    int headSize() const { return number(0); }
    int width() const { return number(4); }
    int height() const { return number(5); }
    int bitsPerPixel() const { return number(11); }
    int bytesPerLine() const { return number(12); }
    int colors() const { return number(19); }

    int firstPixel() const { return headSize() + colors() * bytesPerColor; }
    bool isWhole() const { return m_dump.size() >= 100 && m_dump.size() >= firstPixel() + bytesPerLine() * height(); }

private:
    static constexpr int bytesPerColor = 12;

    int number(int index) const { return static_cast<int>(qFromBigEndian<quint32>(m_dump.constData() + index * 4)); }

    const QByteArray &m_dump;
};

} // namespace

VirtualScreen::~VirtualScreen()
{
    m_server.terminate();
    if (m_server.state() != QProcess::NotRunning && !m_server.waitForFinished())
        m_server.kill();
    m_server.waitForFinished();
}

bool VirtualScreen::start(const QSize &size)
{
    // The screen is kept in a file of that folder. The number comes on the standard output, a line of its own.
    m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_server.start(QStringLiteral(XVFB_PROGRAM),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("%1x%2x24").arg(size.width()).arg(size.height()), QStringLiteral("-fbdir"),
                    m_folder.path(), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    if (!eventually([this] { return m_server.canReadLine(); }, startLimit))
        return false;
    m_display = QLatin1Char(':') + QString::fromLatin1(m_server.readLine()).trimmed();
    return m_display.size() > 1;
}

QImage VirtualScreen::picture() const
{
    QFile file(m_folder.filePath(QStringLiteral("Xvfb_screen0")));
    if (!file.open(QFile::ReadOnly))
        return {};
    const QByteArray dump = file.readAll();
    const DumpHead head(dump);
    if (!head.isWhole() || head.bitsPerPixel() != 32)
        return {};
    const auto *const pixels = reinterpret_cast<const uchar *>(dump.constData()) + head.firstPixel();
    return QImage(pixels, head.width(), head.height(), head.bytesPerLine(), QImage::Format_RGB32).copy();
}

bool VirtualScreen::act(const QStringList &arguments) const
{
    QProcess hand;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    hand.setProcessEnvironment(environment);
    hand.setProcessChannelMode(QProcess::ForwardedChannels);
    hand.start(QStringLiteral(XDOTOOL_PROGRAM), arguments);
    return hand.waitForFinished(static_cast<int>(startLimit.count())) && hand.exitStatus() == QProcess::NormalExit
        && hand.exitCode() == 0;
}

bool VirtualScreen::point(const QPoint &place) const
{
    return act({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())});
}

bool VirtualScreen::click(const QPoint &place) const
{
    return point(place) && act({QStringLiteral("click"), QStringLiteral("1")});
}

bool VirtualScreen::type(const QString &text) const
{
    // The server needs a while between the keys where it has to bind one to another character.
    return act({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("40"), text});
}

bool VirtualScreen::press(const QString &key) const
{
    return act({QStringLiteral("key"), key});
}

} // namespace tavro::testsupport
