#pragma once

#include "options.h"

#include <QHash>
#include <QStringList>
#include <QWidget>

class QBoxLayout;
class QComboBox;
class QLineEdit;
class QSpinBox;

namespace tavro::playout {

class SettingsField;

/// The settings as fields to edit. What the command line or the environment gave, and what has no meaning in the
/// machine's role, can be read only and says why.
class SettingsForm : public QWidget {
    Q_OBJECT

public:
    /// @p languages: the names of those that the assistant speaks.
    SettingsForm(const Options &options, const QStringList &languages);

    /// The options with what is in the fields.
    Options edited() const;

    /// Whether all of it can be used; what cannot says so at its field.
    bool isValid() const;

    /// The layout of the fields of the service, for what belongs below them.
    QBoxLayout &serviceColumn() { return *m_serviceColumn; }

Q_SIGNALS:
    void sigChanged();
    void sigServiceChanged(); ///< what the service is asked with; after it comes sigChanged()

private:
    QBoxLayout *addGroup(const QString &title);
    void buildService();
    void buildAssistant(const QStringList &languages);
    void buildMedia();
    SettingsField *add(QBoxLayout &column, const QString &setting, const QString &name, QWidget *editor);
    QLineEdit *addText(const QString &setting, const QString &name, const QString &value);
    QSpinBox *addSeconds(const QString &setting, const QString &name, std::chrono::seconds value);
    void hideToken();
    void addBrowsing(const QString &setting, QLineEdit &editor, bool wantsFolder);
    void fixFields();
    void fixField(const QString &setting, const QString &why);
    void onThemeChosen();
    void onEdited();
    void check(const QString &setting, const QString &name, const QString &problem);
    QString themeFile() const;

    const Options m_options;
    QHash<QString, SettingsField *> m_fields; // by the names of the settings
    QBoxLayout *m_serviceColumn = nullptr;
    QLineEdit *m_service = nullptr;
    QLineEdit *m_token = nullptr;
    QLineEdit *m_userId = nullptr;
    QLineEdit *m_node = nullptr;
    QSpinBox *m_timeout = nullptr;
    QSpinBox *m_tick = nullptr;
    QComboBox *m_language = nullptr;
    QComboBox *m_theme = nullptr;
    QLineEdit *m_themeFile = nullptr;
    QLineEdit *m_media = nullptr;
};

} // namespace tavro::playout
