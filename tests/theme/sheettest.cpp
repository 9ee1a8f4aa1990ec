#include "sheettest.h"

#include <QPainter>
#include <QtTest>

namespace tavro::aiassistant {

void SheetTest::initTestCase()
{
    m_theme = std::make_unique<PaintedTheme>();
    QVERIFY(m_theme->isValid());
}

void SheetTest::init()
{
    m_log.emplace();
    m_window = std::make_unique<QWidget>();
    m_window->resize(400, 300);
    QPalette palette = m_window->palette();
    palette.setColor(QPalette::Window, windowColor);
    m_window->setPalette(palette);
    m_window->setStyleSheet(m_theme->styleSheet());
}

void SheetTest::cleanup()
{
    m_window.reset();
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

QPushButton *SheetTest::button(const char *name, const QSize &size, const QString &text)
{
    auto *made = named<QPushButton>(name);
    made->setText(text);
    made->setGeometry(QRect(QPoint(40, 40), size));
    return made;
}

void SheetTest::show()
{
    QCursor::setPos(0, 0);
    m_window->move(50, 50);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_window->setFocusPolicy(Qt::StrongFocus);
    m_window->setFocus();
}

QPoint middleLeft(const QWidget *widget)
{
    return {0, widget->height() / 2};
}

QImage picture(QWidget *widget)
{
    const QRect place(widget->mapTo(widget->window(), QPoint()), widget->size());
    return widget->window()->grab().toImage().copy(place);
}

QColor pixel(QWidget *widget, const QPoint &at)
{
    const QPoint inWindow = widget->mapTo(widget->window(), at);
    return widget->window()->grab().toImage().pixelColor(inWindow);
}

QRect areaOf(const QImage &image, const QColor &color)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

QColor over(const QColor &upper, const QColor &lower)
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(lower);
    QPainter(&image).fillRect(image.rect(), upper);
    return image.pixelColor(0, 0);
}

} // namespace tavro::aiassistant
