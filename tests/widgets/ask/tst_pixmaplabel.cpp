#include "panelsupport.h"
#include "support/logcatcher.h"
#include "widgets/pixmapcelllabel.h"
#include "widgets/pixmaplabel.h"

#include <QAccessible>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <memory>
#include <optional>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

AIImage image(const QColor &color, const char *name)
{
    AIImage made;
    made.pixmap = QPixmap(320, 100);
    made.pixmap.fill(color);
    made.description = name;
    made.url = std::string("http://pictures/") + name;
    return made;
}

ChatItemContext contextWith(const std::vector<AIImage> &images)
{
    ChatItemContext context;
    context.type = QuestionType::Picture;
    context.question = "three boats";
    context.picInfo.style = "Monet";
    context.picInfo.width = 1920;
    context.images = images;
    return context;
}

std::vector<AIImage> threeImages()
{
    return {image(Qt::red, "one"), image(Qt::green, "two"), image(Qt::blue, "three")};
}

const char *const buttonNames[] = {"magnifierButton", "downloadButton", "modifyButton"};

} // namespace

class TestPixmapLabel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void signalsStandInTheirOrder();
    void cellsStandSideBySide();
    void emptyListGivesAnEmptyRow();
    void barHasItsPlaceBeforeItIsShown();
    void barIsBuiltAsGiven();
    void pictureFillsTheCell();
    void pictureIsTheRecordsOwn();
    void barShowsWhileTheMouseIsOnTheCell();
    void clickDoesNotKeepTheBar();
    void buttonsReportTheirPicture();
    void keyboardReachesEveryButton();
    void keyOnTheThumbnailLooksAtIt_data();
    void keyOnTheThumbnailLooksAtIt();
    void focusedThumbnailIsMarked();
    void buttonsHaveNamesInEveryLanguage();
    void missingPictureLeavesAnEmptyCell();

private:
    void show(const ChatItemContext &context);
    QList<PixmapCellLabel *> cells() const { return m_row->findChildren<PixmapCellLabel *>(); }
    QFrame *bar(int cell) const { return cells().at(cell)->findChild<QFrame *>(QStringLiteral("imageButtonFrame")); }
    QPushButton *button(int cell, const char *name) const
    {
        return cells().at(cell)->findChild<QPushButton *>(QLatin1String(name));
    }
    void moveMouseTo(int cell) { QTest::mouseMove(cells().at(cell), QPoint(20, 10)); }
    void moveMouseAway() { QTest::mouseMove(m_window.get(), QPoint(790, 290)); }

    std::optional<LogCatcher> m_log;
    std::unique_ptr<QWidget> m_window;
    PixmapLabel *m_row = nullptr;
};

void TestPixmapLabel::initTestCase()
{
    qRegisterMetaType<AIImage>("AIImage");
    qRegisterMetaType<PictureGenerateInfo>("PictureGenerateInfo");
}

void TestPixmapLabel::init()
{
    m_log.emplace();
    useLanguage(QStringLiteral("en"));
}

void TestPixmapLabel::cleanup()
{
    m_window.reset();
    const QString complaints = complaintsOf(*m_log);
    m_log.reset();
    QCOMPARE(complaints, QString());
}

void TestPixmapLabel::show(const ChatItemContext &context)
{
    m_window = std::make_unique<QWidget>();
    m_window->resize(800, 300);
    auto *const before = new QPushButton(m_window.get());
    before->setObjectName(QStringLiteral("before"));
    m_row = new PixmapLabel(context, m_window.get());
    m_row->setGeometry(20, 50, 700, 102);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    before->setFocus();
    moveMouseAway();
}

void TestPixmapLabel::signalsStandInTheirOrder()
{
    const QStringList expected{
        QStringLiteral("sigLookImageButtonClicked(AIImage) image"),
        QStringLiteral("sigDownloadButtonClicked(AIImage) image"),
        QStringLiteral("sigTryAgainImageButtonClicked(QString,PictureGenerateInfo) question,picInfo"),
    };
    QCOMPARE(declaredMethods(PixmapLabel::staticMetaObject, QMetaMethod::Signal), expected);
    QCOMPARE(declaredMethods(PixmapCellLabel::staticMetaObject, QMetaMethod::Signal), expected);
}

void TestPixmapLabel::cellsStandSideBySide()
{
    show(contextWith(threeImages()));
    QCOMPARE(cells().size(), 3);
    for (int cell = 0; cell < 3; ++cell)
        QCOMPARE(cells().at(cell)->geometry(), QRect(cell * (163 + 7), 0, 163, 102));
    QCOMPARE(m_row->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(m_row->layout()->spacing(), 7);
}

void TestPixmapLabel::emptyListGivesAnEmptyRow()
{
    show(contextWith({}));
    QCOMPARE(cells().size(), 0);
    QCOMPARE(m_row->layout()->count(), 1);
    QVERIFY(m_row->layout()->itemAt(0)->spacerItem());
}

void TestPixmapLabel::barHasItsPlaceBeforeItIsShown()
{
    m_row = new PixmapLabel(contextWith(threeImages()));
    m_window.reset(m_row);
    for (int cell = 0; cell < 3; ++cell) {
        QCOMPARE(bar(cell)->geometry(), QRect(41, 68, 80, 24));
        QVERIFY(bar(cell)->isHidden());
    }
}

void TestPixmapLabel::barIsBuiltAsGiven()
{
    show(contextWith(threeImages()));
    QCOMPARE(bar(0)->styleSheet(), QStringLiteral("background:#2B2B2B;"));
    QCOMPARE(bar(0)->layout()->contentsMargins(), QMargins(8, 4, 8, 4));
    QCOMPARE(bar(0)->layout()->spacing(), 8);
    QCOMPARE(bar(0)->layout()->count(), 4);
    moveMouseTo(0);
    m_window->setStyleSheet(defaultStyleSheet());
    QTRY_VERIFY(bar(0)->isVisible());
    for (int place = 0; place < 3; ++place) {
        auto *const button = qobject_cast<QPushButton *>(bar(0)->layout()->itemAt(place)->widget());
        QCOMPARE(button->objectName(), QLatin1String(buttonNames[place]));
        QCOMPARE(button->geometry(), QRect(8 + place * 24, 4, 16, 16));
    }
    QVERIFY(bar(0)->layout()->itemAt(3)->spacerItem());
}

void TestPixmapLabel::pictureFillsTheCell()
{
    AIImage halves = image(Qt::red, "halves");
    QPainter(&halves.pixmap).fillRect(160, 0, 160, 100, Qt::blue);
    show(contextWith({halves}));
    const QImage shown = cells().first()->grab().toImage();
    QCOMPARE(shown.size(), QSize(163, 102) * m_window->devicePixelRatioF());
    QCOMPARE(shown.pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(shown.pixelColor(70, shown.height() - 1), QColor(Qt::red));
    QCOMPARE(shown.pixelColor(shown.width() - 1, shown.height() - 1), QColor(Qt::blue));
}

void TestPixmapLabel::pictureIsTheRecordsOwn()
{
    const AIImage one = image(Qt::red, "one");
    show(contextWith({one}));
    const auto *const label = cells().first()->findChild<QLabel *>();
    QVERIFY(label->hasScaledContents());
    QCOMPARE(label->pixmap(Qt::ReturnByValue).cacheKey(), one.pixmap.cacheKey());
}

void TestPixmapLabel::barShowsWhileTheMouseIsOnTheCell()
{
    show(contextWith(threeImages()));
    QVERIFY(!bar(1)->isVisible());
    moveMouseTo(1);
    QTRY_VERIFY(bar(1)->isVisible());
    QVERIFY(!bar(0)->isVisible() && !bar(2)->isVisible());
    moveMouseTo(2);
    QTRY_VERIFY(bar(2)->isVisible());
    QVERIFY(!bar(1)->isVisible());
    moveMouseAway();
    QTRY_VERIFY(!bar(2)->isVisible());
}

void TestPixmapLabel::clickDoesNotKeepTheBar()
{
    show(contextWith(threeImages()));
    moveMouseTo(0);
    QTRY_VERIFY(bar(0)->isVisible());
    QTest::mouseClick(button(0, "downloadButton"), Qt::LeftButton);
    moveMouseAway();
    QTRY_VERIFY(!bar(0)->isVisible());
}

void TestPixmapLabel::buttonsReportTheirPicture()
{
    show(contextWith(threeImages()));
    QVector<AIImage> looked;
    QVector<AIImage> downloaded;
    QStringList again;
    PictureGenerateInfo info;
    connect(m_row, &PixmapLabel::sigLookImageButtonClicked, this, [&](const AIImage &sent) { looked << sent; });
    connect(m_row, &PixmapLabel::sigDownloadButtonClicked, this, [&](const AIImage &sent) { downloaded << sent; });
    connect(m_row, &PixmapLabel::sigTryAgainImageButtonClicked, this,
            [&](const QString &question, const PictureGenerateInfo &sent) {
                again << question;
                info = sent;
            });
    moveMouseTo(1);
    QTRY_VERIFY(bar(1)->isVisible());
    QTest::mouseClick(button(1, "magnifierButton"), Qt::LeftButton);
    QCOMPARE(looked.size(), 1);
    QCOMPARE(looked.first().url, std::string("http://pictures/two"));
    QCOMPARE(looked.first().description, std::string("two"));
    QCOMPARE(looked.first().pixmap.cacheKey(),
             cells().at(1)->findChild<QLabel *>()->pixmap(Qt::ReturnByValue).cacheKey());
    QTest::mouseClick(button(1, "downloadButton"), Qt::LeftButton);
    QCOMPARE(downloaded.size(), 1);
    QCOMPARE(downloaded.first().url, std::string("http://pictures/two"));
    QTest::mouseClick(button(1, "modifyButton"), Qt::LeftButton);
    QCOMPARE(again, QStringList{QStringLiteral("three boats")});
    QCOMPARE(info.style, std::string("Monet"));
    QCOMPARE(info.width, 1920);
    QCOMPARE(looked.size() + downloaded.size(), 2);
}

void TestPixmapLabel::keyboardReachesEveryButton()
{
    show(contextWith(threeImages()));
    QStringList reached;
    for (int step = 0; step < 9; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached << QApplication::focusWidget()->objectName();
        QVERIFY(QApplication::focusWidget()->isVisible());
    }
    QCOMPARE(
        reached.join(QLatin1Char('/')),
        QStringLiteral("/magnifierButton/downloadButton/modifyButton//magnifierButton/downloadButton/modifyButton/"));
    QVERIFY(bar(2)->isVisible());
    QVERIFY(!bar(0)->isVisible() && !bar(1)->isVisible());
    QSignalSpy again(m_row, &PixmapLabel::sigTryAgainImageButtonClicked);
    button(2, "modifyButton")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(again.count(), 1);
    m_window->findChild<QWidget *>(QStringLiteral("before"))->setFocus();
    QVERIFY(!bar(2)->isVisible());
}

void TestPixmapLabel::keyOnTheThumbnailLooksAtIt_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("count");
    QTest::newRow("Return") << int(Qt::Key_Return) << 1;
    QTest::newRow("Enter") << int(Qt::Key_Enter) << 1;
    QTest::newRow("Space") << int(Qt::Key_Space) << 1;
    QTest::newRow("another") << int(Qt::Key_A) << 0;
}

void TestPixmapLabel::keyOnTheThumbnailLooksAtIt()
{
    QFETCH(int, key);
    QFETCH(int, count);
    show(contextWith(threeImages()));
    QSignalSpy looked(m_row, &PixmapLabel::sigLookImageButtonClicked);
    cells().first()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(cells().first(), Qt::Key(key));
    QCOMPARE(looked.count(), count);
}

void TestPixmapLabel::focusedThumbnailIsMarked()
{
    show(contextWith(threeImages()));
    const QImage before = cells().first()->grab().toImage();
    cells().first()->setFocus(Qt::TabFocusReason);
    const QImage focused = cells().first()->grab().toImage();
    QCOMPARE(focused.pixelColor(1, focused.height() / 2), QColor(Qt::white));
    m_window->findChild<QWidget *>(QStringLiteral("before"))->setFocus();
    QCOMPARE(cells().first()->grab().toImage(), before);
}

void TestPixmapLabel::buttonsHaveNamesInEveryLanguage()
{
    show(contextWith(threeImages()));
    QVERIFY(!cells().first()->accessibleName().isEmpty());
    for (const char *language : {"en", "zh_CN", "zh_TW", "korean", "rus"}) {
        useLanguage(QString::fromLatin1(language));
        m_row->retranslate();
        for (const char *name : buttonNames) {
            QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(button(0, name));
            QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), name);
            QVERIFY2(!button(0, name)->toolTip().isEmpty(), name);
        }
    }
    QCOMPARE(button(0, "modifyButton")->toolTip(), QStringLiteral("Изменить"));
}

void TestPixmapLabel::missingPictureLeavesAnEmptyCell()
{
    AIImage none;
    none.url = "http://pictures/none";
    show(contextWith({none}));
    QCOMPARE(cells().first()->size(), QSize(163, 102));
    AIImage downloaded;
    connect(m_row, &PixmapLabel::sigDownloadButtonClicked, this, [&](const AIImage &sent) { downloaded = sent; });
    button(0, "downloadButton")->click();
    QCOMPARE(downloaded.url, none.url);
}

QTEST_MAIN(TestPixmapLabel)
#include "tst_pixmaplabel.moc"
