#include "view/logview.h"

#include "view/hosttheme.h"
#include "view/mediasizes.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTime>
#include <QVBoxLayout>

namespace tavro::playout {

namespace {

constexpr int mostLines = 1000;
constexpr int smallestHeight = 112;

} // namespace

LogView::LogView(const HostTheme &theme)
    : m_lines(new QPlainTextEdit)
    , m_normal(theme.color("DefaultForegroundColor").name(QColor::HexArgb))
    , m_alert(theme.color("ErrorHintForegroundColor").name(QColor::HexArgb))
{
    setObjectName(QStringLiteral("log"));
    m_lines->setObjectName(QStringLiteral("logLines"));
    m_lines->setAccessibleName(QStringLiteral("Log of the assistant's commands"));
    m_lines->setReadOnly(true);
    m_lines->setTabChangesFocus(true);
    m_lines->setMaximumBlockCount(mostLines);
    m_lines->setFrameShape(QFrame::NoFrame);
    m_lines->setPlaceholderText(QStringLiteral("The assistant has sent no command yet."));
    auto *const title = new QLabel(QStringLiteral("Commands"));
    title->setObjectName(QStringLiteral("logTitle"));
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gridStep);
    column->addWidget(title);
    column->addWidget(m_lines, 1);
    setMinimumHeight(smallestHeight);
}

void LogView::addDone(const QString &text)
{
    add(text, m_normal);
}

void LogView::addRefused(const QString &text)
{
    add(QStringLiteral("Refused: ") + text, m_alert);
}

void LogView::addRemark(const QString &text, bool isGood)
{
    add(text, isGood ? m_normal : m_alert);
}

void LogView::add(const QString &text, const QString &color)
{
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
    m_lines->appendHtml(
        QStringLiteral("<span style=\"color:%1\">%2&nbsp; %3</span>").arg(color, time, text.toHtmlEscaped()));
    showLast();
}

void LogView::showLast()
{
    QScrollBar *const bar = m_lines->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void LogView::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    showLast();
}

} // namespace tavro::playout
