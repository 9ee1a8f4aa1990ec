#pragma once

#include "log/logrecord.h"

#include <QFrame>

class QBoxLayout;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace tavro::playout {

class HostTheme;
class LogBook;
class LogText;

/// The log, a line each with time and level: what the assistant's commands came to, what happened besides, and what Qt
/// and the host's logger tell. The operator chooses which lines are shown, copies and saves them, and clears the log.
class LogView : public QFrame {
    Q_OBJECT

public:
    /// Both must outlive the view.
    LogView(LogBook &book, const HostTheme &theme);

    /// Shows all lines anew, after the theme changed.
    void refresh();

    /// The lines that are shown, with date and place.
    QString shownLines() const;

private:
    QBoxLayout *buildTools();
    QPushButton *addButton(QBoxLayout &line, const char *name, const QString &text, const QString &toolTip);
    void onAdded(const LogRecord &record);
    void onDropped(const LogRecord &record);
    bool isWanted(const LogRecord &record) const;
    void showPlaceholder();
    void copy() const;
    void askForFile();
    void saveTo(const QString &path);

    LogBook &m_book;
    const HostTheme &m_theme;
    QComboBox *m_level = nullptr;
    QLineEdit *m_filter = nullptr;
    LogText *m_lines = nullptr;
};

} // namespace tavro::playout
