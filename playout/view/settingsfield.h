#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;

namespace tavro::playout {

/// One setting in a dialogue: its name, what it is edited with, and below that a note, or what is wrong with the value.
class SettingsField : public QWidget {
    Q_OBJECT

public:
    /// The field takes @p editor over, which must have an object name.
    SettingsField(const QString &name, QWidget *editor);

    /// Puts a button behind the editor.
    void addButton(QWidget *button);

    void setNote(const QString &note);

    /// What is wrong with the value, which is shown in place of the note; empty: nothing.
    void setProblem(const QString &problem);
    bool hasProblem() const { return !m_problem.isEmpty(); }

    /// The value can be read only, for the reason in @p why.
    void fix(const QString &why);

private:
    void showHint();

    QWidget *m_editor = nullptr;
    QLabel *m_hint = nullptr;
    QHBoxLayout *m_line = nullptr;
    QList<QWidget *> m_buttons;
    QString m_note;
    QString m_problem;
};

} // namespace tavro::playout
