#include "openai/outcometext.h"

namespace tavro::assistantservice {

namespace {

using Outcome = UpstreamReply::Outcome;

QString tlsText(Outcome outcome)
{
    switch (outcome) {
    case Outcome::NotTrusted:
        return QStringLiteral("The certificate of the %1 is not valid: nobody whom this machine trusts vouches for it. "
                              "Please add its authority to the system's, or name it in SSL_CERT_FILE.");
    case Outcome::WrongName:
        return QStringLiteral("The certificate of the %1 is not valid for this name or address. Please use the name "
                              "that it is made for.");
    case Outcome::OutOfDate:
        return QStringLiteral("The certificate of the %1 is not valid today. Please have it renewed, and check this "
                              "machine's clock.");
    case Outcome::TlsTooOld:
        return QStringLiteral("The %1 speaks a version of TLS that is too old to be safe; it needs TLS 1.2 or newer.");
    case Outcome::NoTls:
        return QStringLiteral("The %1 answers without TLS. Please use http:// in its address.");
    case Outcome::WantsTls:
        return QStringLiteral("The %1 answers with TLS. Please use https:// in its address.");
    default:
        return QStringLiteral("No TLS connection to the %1 comes about. Please check that its port speaks TLS.");
    }
}

QString sentence(Outcome outcome)
{
    switch (outcome) {
    case Outcome::NameUnknown:
        return QStringLiteral("The name of the %1 is not known. Please check the address, and this machine's network.");
    case Outcome::NotConnected:
        return QStringLiteral("The %1 cannot be reached. Is it running?");
    case Outcome::NotAllowed:
        return QStringLiteral("The %1 is, or sends on to, a place where the service does not go: no public address of "
                              "the web.");
    case Outcome::NoHttp:
        return QStringLiteral("The %1 sends what is no HTTP. Please check the port of its address.");
    case Outcome::Silent:
        return QStringLiteral("The %1 hung up without an answer. Please try again. If it speaks TLS, use https:// in "
                              "its address.");
    case Outcome::HeadTooLarge:
        return QStringLiteral("The %1 sent more headers than are taken. Please check what runs at its address.");
    case Outcome::TooLarge:
        return QStringLiteral("The %1 sent a larger answer than is taken.");
    case Outcome::TooManyRedirects:
        return QStringLiteral("The %1 sends on to other addresses again and again.");
    case Outcome::OutOfTime:
        return QStringLiteral("The %1 did not answer in time. Please try again.");
    case Outcome::Cancelled:
        return QStringLiteral("The assistant service is being stopped.");
    case Outcome::Answered:
    case Outcome::Broken:
        return QStringLiteral("The %1 broke off its answer. Please try again.");
    default:
        return tlsText(outcome);
    }
}

} // namespace

QString outcomeText(Outcome outcome, const QString &server)
{
    const QString text = sentence(outcome);
    return text.contains(QLatin1String("%1")) ? text.arg(server) : text;
}

} // namespace tavro::assistantservice
