#include "aicontroller/proxyports.h"

#include "multimachineproxy/multimachineproxyclient.h"
#include "multimachineproxy/multimachineproxyserver.h"

namespace tavro::aiassistant {

std::unique_ptr<ProxyClientPort> makeProxyClient(AiController &controller, IZVRuntime &runtime)
{
    return std::make_unique<MultimachineProxyClient>(&controller, &runtime);
}

std::unique_ptr<ProxyServerPort> makeProxyServer(AiController &controller, IZVRuntime &runtime)
{
    return std::make_unique<MultimachineProxyServer>(&controller, &runtime);
}

} // namespace tavro::aiassistant
