#include "view/logview.h"

#include "log/logbook.h"
#include "view/hosttheme.h"
#include "view/logtext.h"
#include "view/mediasizes.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

namespace tavro::playout {

namespace {

constexpr int toolHeight = 32;
constexpr int smallestHeight = 120;

const char *colorOf(LogLevel level)
{
    switch (level) {
    case LogLevel::Debug:
        return "Color_W70";
    case LogLevel::Info:
        return "DefaultForegroundColor";
    case LogLevel::Warning:
        return "Color_Yellow_5";
    case LogLevel::Error:
        break;
    }
    return "ErrorHintForegroundColor";
}

QString shownLine(const LogRecord &record)
{
    return record.time.toString(QStringLiteral("HH:mm:ss")) + QLatin1Char(' ') + nameOf(record.level)
        + QStringLiteral("  ") + record.text;
}

QComboBox *makeLevels()
{
    auto *const levels = new QComboBox;
    levels->setObjectName(QStringLiteral("logLevel"));
    levels->setAccessibleName(QStringLiteral("Lowest level that is shown"));
    levels->setToolTip(QStringLiteral("Shows lines of this level and above"));
    levels->setFixedHeight(toolHeight);
    levels->addItem(QStringLiteral("All"), static_cast<int>(LogLevel::Debug));
    levels->addItem(QStringLiteral("Info"), static_cast<int>(LogLevel::Info));
    levels->addItem(QStringLiteral("Warning"), static_cast<int>(LogLevel::Warning));
    levels->addItem(QStringLiteral("Error"), static_cast<int>(LogLevel::Error));
    return levels;
}

QLineEdit *makeFilter()
{
    auto *const filter = new QLineEdit;
    filter->setObjectName(QStringLiteral("logFilter"));
    filter->setPlaceholderText(QStringLiteral("Search the log"));
    filter->setAccessibleName(QStringLiteral("Search the log"));
    filter->setToolTip(QStringLiteral("Shows lines that have this in their text or their place"));
    filter->setClearButtonEnabled(true);
    return filter;
}

} // namespace

LogView::LogView(LogBook &book, const HostTheme &theme)
    : m_book(book)
    , m_theme(theme)
    , m_lines(new LogText)
{
    setObjectName(QStringLiteral("log"));
    m_lines->setObjectName(QStringLiteral("logLines"));
    m_lines->setAccessibleName(QStringLiteral("Log"));
    m_lines->setToolTip(QStringLiteral("The last %1 lines").arg(LogBook::mostRecords));
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gridStep);
    column->addLayout(buildTools());
    column->addWidget(m_lines, 1);
    setMinimumHeight(smallestHeight);
    connect(&book, &LogBook::sigAdded, this, &LogView::onAdded);
    connect(&book, &LogBook::sigDropped, this, &LogView::onDropped);
    connect(&book, &LogBook::sigCleared, this, &LogView::refresh);
    connect(m_level, qOverload<int>(&QComboBox::currentIndexChanged), this, &LogView::refresh);
    connect(m_filter, &QLineEdit::textChanged, this, &LogView::refresh);
    refresh();
}

QBoxLayout *LogView::buildTools()
{
    m_level = makeLevels();
    m_filter = makeFilter();
    auto *const line = new QHBoxLayout;
    line->setSpacing(gridStep);
    line->addWidget(m_level);
    line->addWidget(m_filter, 1);
    const auto *const copyButton =
        addButton(*line, "logCopy", QStringLiteral("Copy"),
                  QStringLiteral("Copies what is selected, or else all lines that are shown"));
    const auto *const save =
        addButton(*line, "logSave", QStringLiteral("Save"), QStringLiteral("Saves the lines that are shown to a file"));
    const auto *const clear = addButton(*line, "logClear", QStringLiteral("Clear"), QStringLiteral("Empties the log"));
    connect(copyButton, &QPushButton::clicked, this, &LogView::copy);
    connect(save, &QPushButton::clicked, this, &LogView::askForFile);
    connect(clear, &QPushButton::clicked, &m_book, &LogBook::clear);
    return line;
}

QPushButton *LogView::addButton(QBoxLayout &line, const char *name, const QString &text, const QString &toolTip)
{
    auto *const button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(toolTip);
    button->setFixedHeight(toolHeight);
    line.addWidget(button);
    return button;
}

void LogView::refresh()
{
    m_lines->dropAll();
    for (const LogRecord &record : m_book.records()) {
        if (isWanted(record))
            m_lines->addLine(shownLine(record), m_theme.color(colorOf(record.level)));
    }
    showPlaceholder();
}

void LogView::onAdded(const LogRecord &record)
{
    if (isWanted(record))
        m_lines->addLine(shownLine(record), m_theme.color(colorOf(record.level)));
    showPlaceholder();
}

void LogView::onDropped(const LogRecord &record)
{
    if (isWanted(record))
        m_lines->dropFirstLine();
}

bool LogView::isWanted(const LogRecord &record) const
{
    const QString wanted = m_filter->text().trimmed();
    return static_cast<int>(record.level) >= m_level->currentData().toInt()
        && (record.text.contains(wanted, Qt::CaseInsensitive) || record.place.contains(wanted, Qt::CaseInsensitive));
}

void LogView::showPlaceholder()
{
    m_lines->setPlaceholderText(m_book.records().empty() ? QStringLiteral("Nothing has happened yet.")
                                                         : QStringLiteral("No line is like this."));
}

QString LogView::shownLines() const
{
    QString lines;
    for (const LogRecord &record : m_book.records()) {
        if (isWanted(record))
            lines += fullLine(record) + QLatin1Char('\n');
    }
    return lines;
}

void LogView::copy() const
{
    const QTextCursor cursor = m_lines->textCursor();
    // A selection over several lines has paragraph separators.
    const QString selected = cursor.selection().toPlainText();
    QApplication::clipboard()->setText(selected.isEmpty() ? shownLines() : selected);
}

void LogView::askForFile()
{
    auto *const dialog = new QFileDialog(window(), QStringLiteral("Save the log"), QDir::homePath(),
                                         QStringLiteral("Log files (*.log *.txt);;All files (*)"));
    dialog->setObjectName(QStringLiteral("logSaveDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("log"));
    dialog->selectFile(QStringLiteral("playout.log"));
    connect(dialog, &QFileDialog::fileSelected, this, &LogView::saveTo);
    dialog->open();
}

void LogView::saveTo(const QString &path)
{
    QSaveFile file(path);
    const bool isSaved = file.open(QFile::WriteOnly) && file.write(shownLines().toUtf8()) >= 0 && file.commit();
    m_book.add(isSaved ? LogLevel::Info : LogLevel::Error,
               isSaved ? QStringLiteral("The log was saved: %1").arg(path)
                       : QStringLiteral("The log was not saved: %1: %2").arg(path, file.errorString()));
}

} // namespace tavro::playout
