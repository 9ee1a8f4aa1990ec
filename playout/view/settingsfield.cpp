#include "view/settingsfield.h"

#include "view/mediasizes.h"

#include <QGridLayout>
#include <QLabel>
#include <QStyle>
#include <QVariant>

namespace tavro::playout {

namespace {

constexpr int nameWidth = 17 * gridStep;
constexpr int editorHeight = 4 * gridStep;

void setLook(QWidget &widget, bool isBad)
{
    widget.setProperty("look", isBad ? QStringLiteral("bad") : QString());
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

} // namespace

SettingsField::SettingsField(const QString &name, QWidget *editor)
    : m_editor(editor)
    , m_hint(new QLabel)
    , m_line(new QHBoxLayout)
{
    auto *const label = new QLabel(name);
    label->setFixedWidth(nameWidth);
    label->setBuddy(editor);
    editor->setAccessibleName(name);
    editor->setFixedHeight(editorHeight);
    m_hint->setObjectName(editor->objectName() + QStringLiteral("Hint"));
    m_hint->setProperty("part", QStringLiteral("hint"));
    m_hint->setWordWrap(true);
    m_hint->hide();
    m_line->setSpacing(gridStep);
    m_line->addWidget(editor, 1);
    auto *const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(gridStep);
    grid->setVerticalSpacing(gridStep / 2);
    grid->addWidget(label, 0, 0);
    grid->addLayout(m_line, 0, 1);
    grid->addWidget(m_hint, 1, 1);
    grid->setColumnStretch(1, 1);
}

void SettingsField::addButton(QWidget *button)
{
    button->setFixedHeight(editorHeight);
    m_line->addWidget(button);
    m_buttons.append(button);
}

void SettingsField::setNote(const QString &note)
{
    m_note = note;
    showHint();
}

void SettingsField::setProblem(const QString &problem)
{
    if (problem == m_problem)
        return;
    m_problem = problem;
    showHint();
    setLook(*m_editor, hasProblem());
    setLook(*m_hint, hasProblem());
}

void SettingsField::fix(const QString &why)
{
    m_editor->setEnabled(false);
    for (QWidget *const button : qAsConst(m_buttons))
        button->setEnabled(false);
    setNote(why);
}

void SettingsField::showHint()
{
    const QString hint = hasProblem() ? m_problem : m_note;
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
    m_editor->setAccessibleDescription(hint);
}

} // namespace tavro::playout
