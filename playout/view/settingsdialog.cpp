#include "view/settingsdialog.h"

#include "view/mediasizes.h"
#include "view/settingsform.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVariant>

#include <utility>

namespace tavro::playout {

namespace {

constexpr int buttonHeight = 4 * gridStep;

QLabel *makeMessage(const char *name)
{
    auto *const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setProperty("part", QStringLiteral("message"));
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QString idleReport()
{
    return QStringLiteral("Changes hold from the next question on; one on its way may fail.");
}

} // namespace

SettingsDialog::SettingsDialog(const Options &options, const QStringList &languages, Save save, QWidget *parent)
    : QDialog(parent)
    , m_save(std::move(save))
    , m_form(new SettingsForm(options, languages))
    , m_asksItself(options.role != Role::Client)
{
    setObjectName(QStringLiteral("settings"));
    setWindowTitle(QStringLiteral("Settings"));
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(3 * gridStep, 3 * gridStep, 3 * gridStep, 2 * gridStep);
    column->setSpacing(3 * gridStep);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(m_form);
    buildTest();
    buildEnd(options);
    connect(m_form, &SettingsForm::sigServiceChanged, this, &SettingsDialog::onServiceChanged);
    connect(m_form, &SettingsForm::sigChanged, this, &SettingsDialog::onChanged);
    connect(&m_connectionTest, &ConnectionTest::sigFinished, this, &SettingsDialog::showReport);
    onChanged();
}

void SettingsDialog::buildTest()
{
    m_test = new QPushButton(QStringLiteral("Test connection"));
    m_test->setObjectName(QStringLiteral("settingsTest"));
    m_test->setAutoDefault(false);
    m_test->setFixedHeight(buttonHeight);
    m_report = makeMessage("settingsReport");
    auto *const line = new QHBoxLayout;
    line->setSpacing(2 * gridStep);
    line->addWidget(m_test);
    line->addWidget(m_report, 1);
    m_form->serviceColumn().addLayout(line);
    connect(m_test, &QPushButton::clicked, this, &SettingsDialog::startTest);
    showMessage(*m_report, idleReport(), "");
}

void SettingsDialog::buildEnd(const Options &options)
{
    m_message = makeMessage("settingsMessage");
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("settingsOk"));
    m_buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("settingsCancel"));
    const auto all = m_buttons->buttons();
    for (QAbstractButton *const each : all) {
        each->setFixedHeight(buttonHeight);
        each->setIcon({});
    }
    auto *const end = new QHBoxLayout;
    end->setSpacing(2 * gridStep);
    end->addWidget(m_message, 1);
    end->addWidget(m_buttons, 0, Qt::AlignBottom);
    static_cast<QBoxLayout *>(layout())->addLayout(end);
    showMessage(*m_message, QStringLiteral("Kept in %1").arg(options.settingsFile), "");
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void SettingsDialog::onChanged()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_form->isValid());
    m_test->setEnabled(m_asksItself && !m_connectionTest.isRunning());
}

// A report on other values than those in the fields would mislead.
void SettingsDialog::onServiceChanged()
{
    m_connectionTest.stop();
    showMessage(*m_report, idleReport(), "");
}

void SettingsDialog::startTest()
{
    const Options options = m_form->edited();
    m_connectionTest.start({options.service, options.token, options.userId, options.node});
    showMessage(*m_report, QStringLiteral("Asking the service…"), "");
    onChanged();
}

void SettingsDialog::showReport(const ServiceReport &report)
{
    showMessage(*m_report, report.text, report.outcome == ServiceReport::Outcome::Reachable ? "good" : "bad");
    onChanged();
}

void SettingsDialog::showMessage(QLabel &label, const QString &text, const char *look)
{
    label.setText(text);
    label.setProperty("look", QLatin1String(look));
    label.style()->unpolish(&label);
    label.style()->polish(&label);
}

void SettingsDialog::accept()
{
    if (!m_form->isValid())
        return;
    if (const QString problem = m_save(m_form->edited()); !problem.isEmpty()) {
        showMessage(*m_message, problem, "bad");
        return;
    }
    QDialog::accept();
}

} // namespace tavro::playout
