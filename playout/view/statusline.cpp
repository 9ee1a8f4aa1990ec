#include "view/statusline.h"

#include "view/elidedlabel.h"
#include "view/mediasizes.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QVariant>

namespace tavro::playout {

namespace {

constexpr int lineHeight = 40;
constexpr int buttonHeight = 24;

template <typename Label>
Label *makeLabel(const char *name)
{
    auto *const label = new Label;
    label->setObjectName(QLatin1String(name));
    return label;
}

QFrame *makeSeparator()
{
    auto *const line = new QFrame;
    line->setProperty("part", QStringLiteral("separator"));
    line->setFixedSize(1, 2 * gridStep);
    return line;
}

void showText(QLabel &label, const QString &text, bool isGood)
{
    label.setText(text);
    label.setProperty("look", isGood ? QStringLiteral("good") : QStringLiteral("bad"));
    label.style()->unpolish(&label);
    label.style()->polish(&label);
}

} // namespace

StatusLine::StatusLine()
    : m_role(makeLabel<QLabel>("statusRole"))
    , m_runtime(makeLabel<QLabel>("statusRuntime"))
    , m_service(makeLabel<QLabel>("statusService"))
    , m_command(makeLabel<ElidedLabel>("statusCommand"))
    , m_assistant(new QPushButton(QStringLiteral("Assistant  F9")))
{
    setObjectName(QStringLiteral("statusLine"));
    setFixedHeight(lineHeight);
    m_assistant->setObjectName(QStringLiteral("assistantButton"));
    m_assistant->setCheckable(true);
    m_assistant->hide();
    m_assistant->setFixedHeight(buttonHeight);
    m_assistant->setToolTip(QStringLiteral("Shows or hides the assistant"));
    auto *const line = new QHBoxLayout(this);
    line->setContentsMargins(2 * gridStep, 0, 2 * gridStep, 0);
    line->setSpacing(2 * gridStep);
    for (QLabel *const label : {m_role, m_runtime, m_service}) {
        line->addWidget(label);
        line->addWidget(makeSeparator());
    }
    line->addWidget(m_command, 1);
    line->addWidget(m_assistant);
    showCommand(QStringLiteral("No command yet"), true);
}

void StatusLine::showRole(const QString &role)
{
    m_role->setText(QStringLiteral("Role: %1").arg(role));
}

void StatusLine::showRuntime(const QString &runtime, bool isGood)
{
    showText(*m_runtime, QStringLiteral("Runtime: %1").arg(runtime), isGood);
}

void StatusLine::showService(const QString &address, const QString &state, bool isGood)
{
    showText(*m_service, QStringLiteral("Service: %1").arg(state), isGood);
    m_service->setToolTip(address);
}

void StatusLine::showCommand(const QString &text, bool isGood)
{
    showText(*m_command, text, isGood);
}

} // namespace tavro::playout
