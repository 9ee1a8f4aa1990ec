#include "asktest.h"
#include "panelsupport.h"
#include "theme/stylesheetbuilder.h"
#include "widgets/askwidget_p.h"

#include <QAccessible>
#include <QButtonGroup>
#include <QComboBox>
#include <QFileInfo>
#include <QFrame>
#include <QImage>
#include <QLayout>
#include <QMovie>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

namespace {

QStringList entries(const QComboBox &chooser)
{
    QStringList texts;
    for (int index = 0; index < chooser.count(); ++index)
        texts << chooser.itemText(index);
    return texts;
}

} // namespace

class TestAskAppearance : public AskTest {
    Q_OBJECT

private Q_SLOTS:
    void methodsStandInTheirOrder();
    void controlsHaveTheirNames();
    void beginsInAskAndAnswerMode();
    void textsFollowTheLanguage_data();
    void textsFollowTheLanguage();
    void languageSwitchKeepsWhatWasWritten();
    void withoutTextsNothingIsShown();
    void themeSwitchKeepsWhatWasWritten();
    void placeholderDoesNotLookWritten();
    void tabReachesEveryControl();
    void controlsHaveAccessibleNames();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void iconsAreReadFromTheProgramsFolders();
    void everyPictureOfTheThemeIsThere();
    void loadingAnimationPlays_data();
    void loadingAnimationPlays();
};

void TestAskAppearance::methodsStandInTheirOrder()
{
    QCOMPARE(declaredMethods(AskWidget::staticMetaObject, QMetaMethod::Signal),
             QStringList({
                 QStringLiteral("sigSendToGenerateText(QString) text"),
                 QStringLiteral("sigSendToGenrateImage(PictureGenerateInfo) info"),
                 QStringLiteral("sigStopToGenerate()"),
                 QStringLiteral("sigActiveDeepSeekModel(bool) bActive"),
                 QStringLiteral("sigActiverOnlineSearch(bool) bActive"),
                 QStringLiteral("sigRequestTimeout()"),
             }));
    QCOMPARE(declaredMethods(*AskWidgetAccess::of(*ask).metaObject(), QMetaMethod::Slot),
             QStringList({
                 QStringLiteral("slotTextEditTextChanged()"),
                 QStringLiteral("slotGroupBtnClicked(QAbstractButton*) button"),
                 QStringLiteral("slotDealSendMsgBtnClicked()"),
                 QStringLiteral("slotDealStopBtnClicked()"),
             }));
}

void TestAskAppearance::controlsHaveTheirNames()
{
    for (const char *name : {"askAndAnwser", "generateImage", "modelBtn", "onlineSearch", "sendMsg", "stop"})
        QVERIFY2(button(name), name);
    for (const char *name : {"askAndAnwser", "generateImage", "modelBtn", "onlineSearch"})
        QVERIFY2(button(name)->isCheckable(), name);
    QVERIFY(child<QFrame>("askArea"));
    QVERIFY(child<QFrame>("line2"));
    QVERIFY(child<QFrame>("askArea")->isAncestorOf(edit()));
    QCOMPARE(button("modelBtn")->text(), QStringLiteral("Deepseek"));
    QCOMPARE(entries(*chooser("ratioSelect")), QStringLiteral("16:9 16:10 5:4 4:3").split(QLatin1Char(' ')));
    QCOMPARE(chooser("styleSelect")->count(), 10);
    auto *const group = ask->findChild<QButtonGroup *>();
    QVERIFY(group->exclusive());
    QCOMPARE(group->id(button("askAndAnwser")), 0);
    QCOMPARE(group->id(button("generateImage")), 1);
}

void TestAskAppearance::beginsInAskAndAnswerMode()
{
    QVERIFY(button("askAndAnwser")->isChecked());
    QVERIFY(isShown("modelBtn") && isShown("onlineSearch"));
    QVERIFY(!isShown("ratioSelect") && !isShown("styleSelect"));
    QVERIFY(isShown("sendMsg") && !isShown("stop"));
    QCOMPARE(counter(), QStringLiteral("0/200"));
    QCOMPARE(edit()->placeholderText(), QStringLiteral("Ask me anything..."));
}

void TestAskAppearance::textsFollowTheLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("send");
    QTest::addColumn<QString>("lastStyle");
    QTest::newRow("en") << "en"
                        << "AI Chat"
                        << "Send"
                        << "Matisse";
    QTest::newRow("zh_CN") << "zh_CN"
                           << "智能问答"
                           << "发送"
                           << "马蒂斯";
    QTest::newRow("zh_TW") << "zh_TW"
                           << "智慧問答"
                           << "傳送"
                           << "馬諦斯";
    QTest::newRow("korean") << "korean"
                            << "AI 채팅"
                            << "보내기"
                            << "마티스";
    QTest::newRow("rus") << "rus"
                         << "ИИ-чат"
                         << "Отправить"
                         << "Матисс";
}

void TestAskAppearance::textsFollowTheLanguage()
{
    QFETCH(QString, language);
    QFETCH(QString, mode);
    QFETCH(QString, send);
    QFETCH(QString, lastStyle);
    useLanguage(language);
    ask->retranslate();
    QCOMPARE(button("askAndAnwser")->text(), mode);
    QCOMPARE(button("sendMsg")->text(), send);
    QCOMPARE(entries(*chooser("styleSelect")).last(), lastStyle);
    QCOMPARE(button("modelBtn")->text(), QStringLiteral("Deepseek"));
    for (const char *name : {"generateImage", "onlineSearch", "stop"})
        QVERIFY2(!button(name)->text().isEmpty(), name);
    QVERIFY(!entries(*chooser("styleSelect")).contains(QString()));
}

void TestAskAppearance::languageSwitchKeepsWhatWasWritten()
{
    click("generateImage");
    chooser("styleSelect")->setCurrentIndex(3);
    edit()->setFocus();
    QTest::keyClicks(edit(), QStringLiteral("half a ques"));
    useLanguage(QStringLiteral("zh_CN"));
    ask->retranslate();
    QCOMPARE(written(), QStringLiteral("half a ques"));
    QCOMPARE(chooser("styleSelect")->currentIndex(), 3);
    QCOMPARE(chooser("styleSelect")->currentText(), QStringLiteral("扁平插画"));
    QVERIFY(edit()->placeholderText().startsWith(QStringLiteral("描述")));
    QVERIFY(edit()->hasFocus());
}

void TestAskAppearance::withoutTextsNothingIsShown()
{
    useLanguage(QStringLiteral("klingon"));
    ask->retranslate();
    QCOMPARE(button("sendMsg")->text(), QString());
    QCOMPARE(edit()->placeholderText(), QString());
}

void TestAskAppearance::themeSwitchKeepsWhatWasWritten()
{
    QTest::keyClicks(edit(), QStringLiteral("half a ques"));
    ask->setStyleSheet(defaultStyleSheet());
    ask->setStyleSheet(QString());
    QTest::keyClicks(edit(), QStringLiteral("tion"));
    QCOMPARE(written(), QStringLiteral("half a question"));
    QVERIFY(edit()->hasFocus());
}

void TestAskAppearance::placeholderDoesNotLookWritten()
{
    for (int again = 0; again < 2; ++again) {
        ask->setStyleSheet(defaultStyleSheet() + QString(again, QLatin1Char(' ')));
        QColor expected(Qt::white);
        expected.setAlphaF(0.6);
        QCOMPARE(edit()->palette().color(QPalette::PlaceholderText), expected);
        QCOMPARE(edit()->palette().color(QPalette::Text), QColor(Qt::white));
    }
}

void TestAskAppearance::tabReachesEveryControl()
{
    edit()->setPlainText(QStringLiteral("text"));
    button("askAndAnwser")->setFocus();
    QStringList order;
    for (int step = 0; step < 5; ++step) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("askAndAnwser askEdit modelBtn onlineSearch sendMsg"));
    QCOMPARE(written(), QStringLiteral("text"));
    click("generateImage");
    edit()->setFocus();
    QTest::keyClick(edit(), Qt::Key_Tab);
    QVERIFY(chooser("ratioSelect")->hasFocus());
    QTest::keyClick(chooser("ratioSelect"), Qt::Key_Tab);
    QVERIFY(chooser("styleSelect")->hasFocus());
}

void TestAskAppearance::controlsHaveAccessibleNames()
{
    for (const char *name : {"askAndAnwser", "generateImage", "askEdit", "modelBtn", "onlineSearch", "ratioSelect",
                             "styleSelect", "sendMsg", "stop"}) {
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(child(name));
        QVERIFY2(interface && !interface->text(QAccessible::Name).isEmpty(), name);
    }
}

void TestAskAppearance::nothingIsCutOff_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"en", "zh_CN", "zh_TW", "korean", "rus"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

void TestAskAppearance::nothingIsCutOff()
{
    QFETCH(QString, language);
    useLanguage(language);
    ask->retranslate();
    ask->setStyleSheet(defaultStyleSheet());
    edit()->setPlainText(characters(200));
    for (const char *mode : {"askAndAnwser", "generateImage"}) {
        click(mode);
        ask->layout()->activate();
        QVector<QRect> places;
        for (const char *name : {"askAndAnwser", "generateImage", "askEdit", "modelBtn", "onlineSearch", "ratioSelect",
                                 "styleSelect", "remainWord", "sendMsg"}) {
            const QWidget *const control = child(name);
            if (!control->isVisible())
                continue;
            const QRect place = placeIn(ask.get(), control);
            QVERIFY2(ask->rect().contains(place), name);
            if (qobject_cast<const QTextEdit *>(control) == nullptr)
                QVERIFY2(place.width() >= control->sizeHint().width(), name);
            for (const QRect &other : qAsConst(places))
                QVERIFY2(!other.intersects(place), name);
            places << place;
        }
        QVERIFY(placeIn(ask.get(), child("askArea")).contains(placeIn(ask.get(), child("sendMsg"))));
    }
}

void TestAskAppearance::iconsAreReadFromTheProgramsFolders()
{
    for (const char *name : {"askAndAnwser", "generateImage", "modelBtn", "onlineSearch"}) {
        const QIcon icon = button(name)->icon();
        const QImage off = icon.pixmap(QSize(20, 16), QIcon::Normal, QIcon::Off).toImage();
        const QImage on = icon.pixmap(QSize(20, 16), QIcon::Normal, QIcon::On).toImage();
        QVERIFY2(!off.isNull() && !on.isNull(), name);
        QVERIFY2(off != on, name);
        QCOMPARE(icon.pixmap(QSize(20, 16), QIcon::Disabled, QIcon::On).toImage(), on);
    }
}

void TestAskAppearance::everyPictureOfTheThemeIsThere()
{
    const auto theme = readTheme(":/aiassistant/theme/default_aiassistant.theme");
    const QStringList keys = theme->imageKeys();
    QVERIFY(keys.contains(QStringLiteral("downArrow")));
    for (const QString &key : keys) {
        const QFileInfo file(theme->image(key));
        const QImage single(file.filePath());
        const QImage twice(QStringLiteral("%1/%2@2x.%3").arg(file.path(), file.completeBaseName(), file.suffix()));
        QVERIFY2(!single.isNull() && !twice.isNull(), qPrintable(file.filePath()));
        QCOMPARE(twice.size(), single.size() * 2);
    }
}

void TestAskAppearance::loadingAnimationPlays_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QSize>("size");
    QTest::newRow("single") << ":/img/resource/images/loading.gif" << QSize(32, 16);
    QTest::newRow("double") << ":/img/resource/images/loading@2x.gif" << QSize(64, 32);
}

void TestAskAppearance::loadingAnimationPlays()
{
    QFETCH(QString, file);
    QFETCH(QSize, size);
    QMovie movie(file);
    QVERIFY(movie.jumpToFrame(0));
    QCOMPARE(movie.currentImage().size(), size);
    QCOMPARE(movie.currentImage().pixelColor(0, 0).alpha(), 0);
    QCOMPARE(movie.frameCount(), 16);
    QCOMPARE(movie.loopCount(), -1); // for ever
    const QImage first = movie.currentImage();
    for (int frame = 1; frame <= 4; ++frame) // Qt reads this format forwards only
        QVERIFY(movie.jumpToNextFrame());
    QVERIFY(movie.currentImage() != first);
}

QTEST_MAIN(TestAskAppearance)
#include "tst_askappearance.moc"
