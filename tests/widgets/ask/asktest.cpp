#include "asktest.h"

#include "panelsupport.h"

#include <QComboBox>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

void AskTest::initTestCase()
{
    qRegisterMetaType<PictureGenerateInfo>("PictureGenerateInfo");
}

void AskTest::init()
{
    m_log.emplace();
    useLanguage(QStringLiteral("en"));
    ask = std::make_unique<AskWidget>();
    ask->setFixedWidth(800);
    ask->show();
    ask->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(ask.get()));
    ask->focusEdit();
    QVERIFY(edit()->hasFocus());
}

void AskTest::cleanup()
{
    ask.reset();
    const QString complaints = complaintsOf(*m_log);
    m_log.reset();
    QCOMPARE(complaints, QString());
}

QString AskTest::characters(int count)
{
    return QString(count, QLatin1Char('x'));
}

QTextEdit *AskTest::edit() const
{
    return child<QTextEdit>("askEdit");
}

QPushButton *AskTest::button(const char *name) const
{
    return child<QPushButton>(name);
}

QComboBox *AskTest::chooser(const char *name) const
{
    return child<QComboBox>(name);
}

QString AskTest::written() const
{
    return edit()->toPlainText();
}

QString AskTest::counter() const
{
    return child<QLabel>("remainWord")->text();
}

int AskTest::cursor() const
{
    return edit()->textCursor().position();
}

void AskTest::click(const char *name) const
{
    QTest::mouseClick(child(name), Qt::LeftButton);
}

qreal AskTest::sendOpacity() const
{
    return qobject_cast<QGraphicsOpacityEffect *>(button("sendMsg")->graphicsEffect())->opacity();
}
