#include "optionvalues.h"

#include <QCommandLineParser>

namespace tavro::assistantservice {

OptionValues::OptionValues(const QCommandLineParser &parser)
    : m_parser(parser)
{ }

bool OptionValues::isGiven(const char *name) const
{
    return m_parser.isSet(QLatin1String(name));
}

QString OptionValues::text(const char *name) const
{
    return m_parser.value(QLatin1String(name));
}

QStringList OptionValues::texts(const char *name) const
{
    return m_parser.values(QLatin1String(name));
}

int OptionValues::number(const char *name, int minimum, int maximum)
{
    bool ok = false;
    const int value = text(name).toInt(&ok);
    if (!ok || value < minimum || value > maximum) {
        fail(name, QStringLiteral("must be a whole number from %1 to %2").arg(minimum).arg(maximum));
    }
    return value;
}

void OptionValues::fail(const char *name, const QString &reason)
{
    if (m_error.isEmpty()) {
        m_error = QStringLiteral("--%1 %2; \"%3\" was given.").arg(QLatin1String(name), reason, text(name));
    }
}

void OptionValues::failSecretly(const char *name, const QString &reason)
{
    if (m_error.isEmpty()) {
        m_error = QStringLiteral("--%1 %2.").arg(QLatin1String(name), reason);
    }
}

} // namespace tavro::assistantservice
