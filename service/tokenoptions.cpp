#include "tokenoptions.h"

#include "authority.h"
#include "tokenfile.h"

#include <QCommandLineParser>
#include <QFile>

namespace tavro::assistantservice {

namespace {

QByteArray readGivenToken(OptionValues &values)
{
    // A header's value begins and ends without blanks, so a token cannot have them either.
    const QByteArray token = values.text("token").toUtf8().trimmed();
    const QString reason = whyNoToken(token);
    if (!reason.isEmpty()) {
        values.failSecretly("token", reason);
    }
    return token;
}

QByteArray readEnvironmentToken(OptionValues &values, const QByteArray &variable)
{
    const QByteArray token = variable.trimmed();
    const QString reason = whyNoToken(token);
    if (!token.isEmpty() && !reason.isEmpty()) {
        values.failSecretly("token", QStringLiteral("(from ASSISTANTSERVICE_TOKEN) ") + reason);
    }
    return token;
}

void checkNoToken(OptionValues &values, const QByteArray &environmentToken)
{
    if (values.isGiven("token") || values.isGiven("token-file")) {
        values.failSecretly("no-token", QStringLiteral("goes without --token and --token-file"));
    } else if (!environmentToken.trimmed().isEmpty()) {
        values.failSecretly("no-token", QStringLiteral("goes without ASSISTANTSERVICE_TOKEN in the environment"));
    }
}

QString readTokenFile(OptionValues &values)
{
    if (values.isGiven("token")) {
        values.failSecretly("token-file", QStringLiteral("goes without --token"));
    } else if (values.text("token-file").isEmpty()) {
        values.fail("token-file", QStringLiteral("must name a file"));
    }
    return values.text("token-file");
}

QString standardFile(OptionValues &values, const QString &folder)
{
    if (folder.isEmpty()) {
        values.failSecretly("token-file", QStringLiteral("is needed: there is no folder to keep a token in"));
    }
    return folder + QStringLiteral("/token");
}

} // namespace

void addTokenOptions(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("token"),
                      QStringLiteral("Token that clients must send. Better kept in a file, or given in the environment "
                                     "as ASSISTANTSERVICE_TOKEN, where other users of the machine cannot read it."),
                      QStringLiteral("token")});
    parser.addOption({QStringLiteral("token-file"),
                      QStringLiteral("File with the token; where there is none it is made with a random one. Without "
                                     "it, and where other machines reach the service, \"token\" in its state folder."),
                      QStringLiteral("file")});
    parser.addOption(
        {QStringLiteral("no-token"), QStringLiteral("Let everybody in who reaches the service from other machines.")});
}

TokenChoice readTokenChoice(OptionValues &values, const Environment &environment, const QByteArray &listenHost)
{
    if (values.isGiven("no-token")) {
        checkNoToken(values, environment.token);
        return {};
    }
    if (values.isGiven("token-file")) {
        return {{}, readTokenFile(values)};
    }
    if (values.isGiven("token")) {
        return {readGivenToken(values), {}};
    }
    const QByteArray token = readEnvironmentToken(values, environment.token);
    if (!token.isEmpty() || isLoopback(listenHost)) {
        return {token, {}};
    }
    return {{}, standardFile(values, environment.stateFolder)};
}

} // namespace tavro::assistantservice
