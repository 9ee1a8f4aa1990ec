#pragma once

#include "paintedtheme.h"
#include "support/logcatcher.h"

#include <QImage>
#include <QPushButton>
#include <QWidget>

#include <memory>
#include <optional>

namespace tavro::aiassistant {

/// A window that wears the panel's sheets, for tests that look at its pixels: what counts is what Qt makes of the
/// sheets. An unexpected warning fails the test.
class SheetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

protected:
    static inline const QColor windowColor{0x22, 0x22, 0x26};

    const PaintedTheme &theme() const { return *m_theme; }
    testsupport::LogCatcher &log() { return *m_log; }

    /// A child of the window (or of @p parent) with this object name.
    template <typename Widget>
    Widget *named(const char *name, QWidget *parent = nullptr)
    {
        auto *widget = new Widget(parent ? parent : m_window.get());
        widget->setObjectName(QLatin1String(name));
        return widget;
    }

    QPushButton *button(const char *name, const QSize &size, const QString &text = {});

    /// Shows the window active, with the focus on itself and the mouse elsewhere.
    void show();

private:
    std::unique_ptr<PaintedTheme> m_theme;
    std::unique_ptr<QWidget> m_window;
    std::optional<testsupport::LogCatcher> m_log;
};

QPoint middleLeft(const QWidget *widget);

/// What is seen of a widget, its window behind it.
QImage picture(QWidget *widget);
QColor pixel(QWidget *widget, const QPoint &at);

/// The smallest rectangle around all pixels of exactly @p color.
QRect areaOf(const QImage &image, const QColor &color);

/// @p upper, which may be translucent, drawn on @p lower.
QColor over(const QColor &upper, const QColor &lower);

} // namespace tavro::aiassistant
