#include "themefolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QtTest>

const char *const ThemeFolderTest::smallTheme =
    "\xEF\xBB\xBF;注释\n"
    "[General]\nThemeName=Small\n"
    "[Palettes]\nBrand_1=#111111\nBrand_10=#101010\nW90=#E6FFFFFF \nB50_=#80000000\n"
    "Fade=rgba(1, 2, 3, 0.5)\n"
    "[Colors]\nColor_Brand_1=Brand_1\nColor_Brand_10=Brand_10\nPadded=\"  W90\t \"\n"
    "Color_B50=B50_\nDirect=#FF6D00\nNamed=white\nFaded=Fade\nFunction=rgba(43, 43, 43, 1)\n"
    "Unknown=Brand_77\nEmpty=\nNoHex=#12345\nBreaksOut=\"rgba(1,2,3,1);} * {color:red(1)\"\n"
    "[Flags]\nOn=true\nOne=1\nOff=false\n"
    "[Integers]\nFontSize_XS=8\nNone=many\n"
    "[ImageFiles]\nclose=./images/close.png\ncloseHover=images/../images/hover.png\n"
    "absolute=/somewhere/a.png\nresource=:/some/a.png\nempty=\nchinese=./图/a.png\n";

void ThemeFolderTest::init()
{
    m_folder.emplace();
    QVERIFY(m_folder->isValid());
    m_log.emplace();
}

void ThemeFolderTest::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

void ThemeFolderTest::write(const QString &name, const QByteArray &bytes) const
{
    QVERIFY(QDir().mkpath(QFileInfo(path(name)).absolutePath()));
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

// A file of its own for every reading: QSettings keeps what it read of a path.
void ThemeFolderTest::read(ZT::Theme &theme, const QByteArray &bytes) const
{
    static int number = 0;
    const QString name = QStringLiteral("theme%1.theme").arg(++number);
    write(name, bytes);
    QSettings settings(path(name), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    theme.readSettings(settings);
}
