#include "view/settingsform.h"

#include "hostkit/optionrules.h"
#include "view/mediasizes.h"
#include "view/settingschoices.h"
#include "view/settingsfield.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace tavro::playout {

namespace {

constexpr int formWidth = 80 * gridStep;

// What was not touched stays as it was given, blanks and all.
QString textOf(const QLineEdit &edit, const QString &before)
{
    return edit.text() == before ? before : edit.text().trimmed();
}

QString pathOf(const QLineEdit &edit, const QString &before)
{
    const QString path = textOf(edit, before);
    return path.isEmpty() || path == before ? path : QFileInfo(path).absoluteFilePath();
}

QPushButton *makeButton(const QString &name, const QString &text, const QString &toolTip)
{
    auto *const button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

} // namespace

SettingsForm::SettingsForm(const Options &options, const QStringList &languages)
    : m_options(options)
{
    setObjectName(QStringLiteral("settingsForm"));
    setFixedWidth(formWidth);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3 * gridStep);
    buildService();
    buildAssistant(languages);
    buildMedia();
    fixFields();
    onThemeChosen();
}

QBoxLayout *SettingsForm::addGroup(const QString &title)
{
    auto *const group = new QVBoxLayout;
    group->setSpacing(gridStep);
    auto *const label = new QLabel(title);
    label->setProperty("part", QStringLiteral("title"));
    group->addWidget(label);
    static_cast<QBoxLayout *>(layout())->addLayout(group);
    return group;
}

void SettingsForm::buildService()
{
    m_serviceColumn = addGroup(QStringLiteral("AI service"));
    m_service = addText(QStringLiteral("service"), QStringLiteral("Address"), m_options.service);
    m_token = addText(QStringLiteral("token"), QStringLiteral("Token"), m_options.token);
    hideToken();
    m_userId = addText(QStringLiteral("user-id"), QStringLiteral("User id"), m_options.userId);
    m_node = addText(QStringLiteral("node"), QStringLiteral("Machine's name"), m_options.node);
    m_timeout = addSeconds(QStringLiteral("timeout"), QStringLiteral("Time-out"), m_options.timeout);
    m_tick = addSeconds(QStringLiteral("tick"), QStringLiteral("Ask for it every"), m_options.tick);
    m_fields.value(QStringLiteral("timeout"))->setNote(QStringLiteral("How long an answer may take."));
}

void SettingsForm::buildAssistant(const QStringList &languages)
{
    QBoxLayout *const column = addGroup(QStringLiteral("Assistant"));
    m_language = makeLanguages(languages, m_options.language);
    add(*column, QStringLiteral("language"), QStringLiteral("Language"), m_language);
    m_theme = makeThemes(m_options.themeFile);
    add(*column, QStringLiteral("theme"), QStringLiteral("Theme"), m_theme);
    m_themeFile = new QLineEdit(isBuiltInTheme(m_options.themeFile) ? QString() : m_options.themeFile);
    m_themeFile->setObjectName(QStringLiteral("settingsThemeFile"));
    add(*column, QStringLiteral("theme file"), QStringLiteral("Theme file"), m_themeFile);
    addBrowsing(QStringLiteral("theme file"), *m_themeFile, false);
    connect(m_language, qOverload<int>(&QComboBox::currentIndexChanged), this, &SettingsForm::onEdited);
    connect(m_theme, qOverload<int>(&QComboBox::currentIndexChanged), this, &SettingsForm::onThemeChosen);
    connect(m_themeFile, &QLineEdit::textChanged, this, &SettingsForm::onEdited);
}

void SettingsForm::buildMedia()
{
    QBoxLayout *const column = addGroup(QStringLiteral("Media library"));
    m_media = new QLineEdit(m_options.mediaFolder);
    m_media->setObjectName(QStringLiteral("settingsMedia"));
    add(*column, QStringLiteral("media"), QStringLiteral("Folder"), m_media)
        ->setNote(QStringLiteral("A change takes effect when playout is started again."));
    addBrowsing(QStringLiteral("media"), *m_media, true);
    connect(m_media, &QLineEdit::textChanged, this, &SettingsForm::onEdited);
}

SettingsField *SettingsForm::add(QBoxLayout &column, const QString &setting, const QString &name, QWidget *editor)
{
    auto *const field = new SettingsField(name, editor);
    m_fields.insert(setting, field);
    column.addWidget(field);
    return field;
}

QLineEdit *SettingsForm::addText(const QString &setting, const QString &name, const QString &value)
{
    auto *const edit = new QLineEdit(value);
    edit->setObjectName(QStringLiteral("settings") + setting.at(0).toUpper() + setting.mid(1).remove(QLatin1Char('-')));
    add(*m_serviceColumn, setting, name, edit);
    connect(edit, &QLineEdit::textChanged, this, &SettingsForm::sigServiceChanged);
    connect(edit, &QLineEdit::textChanged, this, &SettingsForm::onEdited);
    return edit;
}

QSpinBox *SettingsForm::addSeconds(const QString &setting, const QString &name, std::chrono::seconds value)
{
    auto *const box = new QSpinBox;
    box->setObjectName(QStringLiteral("settings") + setting.at(0).toUpper() + setting.mid(1));
    box->setRange(1, hostkit::mostSeconds);
    box->setSuffix(QStringLiteral(" s"));
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    box->setValue(static_cast<int>(value.count()));
    add(*m_serviceColumn, setting, name, box);
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &SettingsForm::onEdited);
    return box;
}

void SettingsForm::hideToken()
{
    m_token->setEchoMode(QLineEdit::Password);
    QPushButton *const button =
        makeButton(QStringLiteral("settingsTokenShow"), QStringLiteral("Show"), QStringLiteral("Shows the token"));
    button->setAccessibleName(QStringLiteral("Show the token"));
    button->setCheckable(true);
    connect(button, &QPushButton::toggled, m_token,
            [this](bool shown) { m_token->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password); });
    m_fields.value(QStringLiteral("token"))->addButton(button);
}

void SettingsForm::addBrowsing(const QString &setting, QLineEdit &editor, bool wantsFolder)
{
    QPushButton *const button = makeButton(editor.objectName() + QStringLiteral("Browse"), QStringLiteral("Browse…"),
                                           QStringLiteral("Chooses it on the disk"));
    m_fields.value(setting)->addButton(button);
    connect(button, &QPushButton::clicked, this, [this, &editor, wantsFolder] {
        auto *const dialog = new QFileDialog(this, editor.accessibleName(), editor.text());
        dialog->setObjectName(editor.objectName() + QStringLiteral("Dialog"));
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setOption(QFileDialog::DontUseNativeDialog);
        dialog->setFileMode(wantsFolder ? QFileDialog::Directory : QFileDialog::ExistingFile);
        connect(dialog, &QFileDialog::fileSelected, &editor, &QLineEdit::setText);
        dialog->open();
    });
}

void SettingsForm::fixFields()
{
    if (m_options.role == Role::Client) {
        for (const char *setting : {"token", "user-id", "node"})
            fixField(QLatin1String(setting), QStringLiteral("Without meaning here."));
        fixField(QStringLiteral("service"),
                 QStringLiteral("Without meaning here: the serving machine asks the service."));
    }
    if (m_options.role == Role::Server)
        fixField(QStringLiteral("language"), QStringLiteral("Without meaning here: a server shows no assistant."));
    for (auto giver = m_options.givenBy.begin(); giver != m_options.givenBy.end(); ++giver)
        fixField(giver.key(), QStringLiteral("Given by %1.").arg(*giver));
}

void SettingsForm::fixField(const QString &setting, const QString &why)
{
    SettingsField *const field = m_fields.value(setting);
    if (field)
        field->fix(why);
    if (setting == QLatin1String("theme"))
        m_fields.value(QStringLiteral("theme file"))->fix({});
}

void SettingsForm::onThemeChosen()
{
    m_fields.value(QStringLiteral("theme file"))->setVisible(m_theme->currentData().toString().isEmpty());
    onEdited();
}

QString SettingsForm::themeFile() const
{
    const QString builtIn = m_theme->currentData().toString();
    return builtIn.isEmpty() ? pathOf(*m_themeFile, m_options.themeFile) : builtIn;
}

Options SettingsForm::edited() const
{
    Options options = m_options;
    options.service = hostkit::withoutEndSlash(textOf(*m_service, m_options.service));
    options.token = textOf(*m_token, m_options.token);
    options.userId = textOf(*m_userId, m_options.userId);
    options.node = textOf(*m_node, m_options.node);
    options.timeout = std::chrono::seconds(m_timeout->value());
    options.tick = std::chrono::seconds(m_tick->value());
    options.language = m_language->currentData().toString();
    options.themeFile = themeFile();
    options.mediaFolder = pathOf(*m_media, m_options.mediaFolder);
    return options;
}

void SettingsForm::onEdited()
{
    const Options options = edited();
    check(QStringLiteral("service"), QStringLiteral("This"), hostkit::problemOfService(options.service));
    check(QStringLiteral("token"), QStringLiteral("The token"), hostkit::problemOfHeaderValue(options.token));
    check(QStringLiteral("user-id"), QStringLiteral("The user id"), hostkit::problemOfHeaderValue(options.userId));
    check(QStringLiteral("node"), QStringLiteral("The name"), hostkit::problemOfHeaderValue(options.node));
    check(QStringLiteral("theme file"), QStringLiteral("This"), hostkit::problemOfTheme(options.themeFile));
    check(QStringLiteral("media"), QStringLiteral("This"),
          options.mediaFolder.isEmpty() ? QString() : hostkit::problemOfFolder(options.mediaFolder));
    Q_EMIT sigChanged();
}

void SettingsForm::check(const QString &setting, const QString &name, const QString &problem)
{
    m_fields.value(setting)->setProblem(problem.isEmpty() ? QString() : QStringLiteral("%1 %2.").arg(name, problem));
}

bool SettingsForm::isValid() const
{
    return std::none_of(m_fields.begin(), m_fields.end(),
                        [](const SettingsField *field) { return field->hasProblem(); });
}

} // namespace tavro::playout
