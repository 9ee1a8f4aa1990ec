#pragma once

#include "options.h"
#include "settings/connectiontest.h"

#include <QDialog>

#include <functional>

class QDialogButtonBox;
class QLabel;
class QPushButton;

namespace tavro::playout {

class SettingsForm;

/// The settings that an operator may change while the host runs. It is not modal: the host stays in the operator's
/// hands.
class SettingsDialog : public QDialog {
    Q_OBJECT

public:
    /// Puts the edited options in force and keeps them. Gives what went wrong, and nothing is changed then; empty where
    /// all went well.
    using Save = std::function<QString(const Options &edited)>;

    /// @p languages: the names of those that the assistant speaks.
    SettingsDialog(const Options &options, const QStringList &languages, Save save, QWidget *parent);

    void accept() override; ///< saves; stays open where that fails

private:
    void buildTest();
    void buildEnd(const Options &options);
    void onChanged();
    void onServiceChanged();
    void startTest();
    void showReport(const ServiceReport &report);
    void showMessage(QLabel &label, const QString &text, const char *look);

    Save m_save;
    ConnectionTest m_connectionTest;
    SettingsForm *m_form = nullptr;
    QPushButton *m_test = nullptr;
    QLabel *m_report = nullptr;
    QLabel *m_message = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
    const bool m_asksItself;
};

} // namespace tavro::playout
