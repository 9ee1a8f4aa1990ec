#include "paneltest.h"

#include "panelsupport.h"
#include "widgets/chatitemwidget.h"

#include <QApplication>
#include <QBuffer>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

namespace {

QString textOf(const QWidget &item)
{
    const auto *const browser = item.findChild<QTextEdit *>(QStringLiteral("textBrowser"));
    return browser ? browser->toPlainText() : QString();
}

} // namespace

void PanelTest::init()
{
    f = std::make_unique<ControllerFixture>();
    panel = std::make_unique<MainWidget>();
    useLanguage(QStringLiteral("en"));
    panel->switchLanguage();
    panel->setAIController(&f->controller);
    panel->resize(800, 900);
    panel->show();
    panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(panel.get()));
    edit()->setFocus();
}

void PanelTest::cleanup()
{
    panel.reset();
    settle();
    const QString complaints = complaintsOf(f->log);
    const QStringList left = f->server.leftovers();
    f.reset();
    QCOMPARE(complaints, QString());
    QCOMPARE(left, QStringList());
}

QByteArray PanelTest::pngBytes(const QColor &color)
{
    QImage image(64, 36, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QTextEdit *PanelTest::edit() const
{
    return child<QTextEdit>("askEdit");
}

QPushButton *PanelTest::button(const char *name) const
{
    return child<QPushButton>(name);
}

bool PanelTest::isGenerating() const
{
    return !edit()->isEnabled() && button("stop")->isVisible() && !button("sendMsg")->isVisible();
}

QList<QWidget *> PanelTest::items() const
{
    QList<QWidget *> found;
    const QLayout *const column = child("itemsWidget")->layout();
    for (int index = 0; index < column->count(); ++index) {
        if (QWidget *const widget = column->itemAt(index)->widget())
            found << widget;
    }
    return found;
}

QStringList PanelTest::conversation() const
{
    QStringList lines;
    const QList<QWidget *> all = items();
    for (const QWidget *const item : all) {
        const QString name = QString::fromLatin1(item->metaObject()->className()).section(QStringLiteral("::"), -1);
        lines << name.chopped(static_cast<int>(qstrlen("ItemWidget"))) + QStringLiteral(": ") + textOf(*item);
    }
    return lines;
}

QWidget *PanelTest::item(int index) const
{
    return items().at(index);
}

QWidget *PanelTest::viewer()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        if (window->objectName() == QLatin1String("pictureViewer"))
            return window;
    }
    return nullptr;
}

QPushButton *PanelTest::itemButton(int index, const char *name) const
{
    return item(index)->findChild<QPushButton *>(QLatin1String(name));
}

void PanelTest::ask(const QString &question)
{
    QTest::keyClicks(edit(), question);
    QTest::keyClick(edit(), Qt::Key_Return);
}

void PanelTest::askForPicture(const QString &description)
{
    QTest::mouseClick(button("generateImage"), Qt::LeftButton);
    ask(description);
}

bool PanelTest::acceptText(const QString &reqId)
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(reqId));
    return f->repliesDone();
}

bool PanelTest::acceptPicture()
{
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    return f->repliesDone();
}

bool PanelTest::answerText(const QString &answer)
{
    return f->poll(ControllerFixture::readyText(answer));
}

bool PanelTest::answerPicture(const QByteArray &path, const QColor &color)
{
    f->server.expect("GET", path, ScriptedAnswer::bytes(pngBytes(color), "image/png"));
    return f->poll(ControllerFixture::readyPicture(f->server.url() + QString::fromLatin1(path)));
}
