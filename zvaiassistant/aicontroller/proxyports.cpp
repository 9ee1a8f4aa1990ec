#include "aicontroller/proxyports.h"

#include "common/loggingcategories.h"

namespace tavro::aiassistant {

std::unique_ptr<ProxyClientPort> makeProxyClient(AiController & /*controller*/, IZVRuntime & /*runtime*/)
{
    qCWarning(lcController) << "this build has no proxy client: operations will not reach the serving machine";
    return nullptr;
}

std::unique_ptr<ProxyServerPort> makeProxyServer(AiController & /*controller*/, IZVRuntime & /*runtime*/)
{
    qCWarning(lcController) << "this build has no proxy server: outcomes will not reach the client machines";
    return nullptr;
}

} // namespace tavro::aiassistant
