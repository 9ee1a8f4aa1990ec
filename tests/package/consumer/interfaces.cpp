#include <aicontroller/aicontroller.h>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <vector>
#include <zvruntime/izvruntime.h>

using tavro::IZVRuntime;
using tavro::aiassistant::AiController;
using tavro::aiassistant::IAiController;

namespace {

// The place of a virtual operation in its class's table, counted from 0; -1 for one that is not virtual. In the
// Itanium C++ ABI a pointer to a virtual member function holds one more than the byte offset of its entry.
template <typename Member>
int vtableSlot(Member member)
{
    std::ptrdiff_t words[2];
    static_assert(sizeof words == sizeof member);
    std::memcpy(words, &member, sizeof words);
    return words[0] % 2 == 1 ? static_cast<int>(words[0] / std::ptrdiff_t(sizeof(void *))) : -1;
}

// QObject has twelve entries: three of the meta-object, two destructors, seven operations.
constexpr int controllerFirst = 12;
// The two destructors stand before the runtime's operations.
constexpr int runtimeFirst = 2;

bool areInOrder(const char *interface, int first, const std::vector<int> &places)
{
    for (std::size_t index = 0; index < places.size(); ++index) {
        const int expected = first + static_cast<int>(index);
        if (places[index] == expected)
            continue;
        std::printf("%s: operation %zu stands at %d instead of %d\n", interface, index + 1, places[index], expected);
        return false;
    }
    std::printf("%s: %zu operations in order\n", interface, places.size());
    return true;
}

std::vector<int> controllerSlots()
{
    return {
        vtableSlot(&IAiController::setZVRuntime),
        vtableSlot(&IAiController::loadTheme),
        vtableSlot(&IAiController::switchLanguage),
        vtableSlot(&IAiController::resetMainWidget),
        vtableSlot(&IAiController::setTimeout),
        vtableSlot(&IAiController::setSingleTickTime),
        vtableSlot(&IAiController::setDomain),
        vtableSlot(&IAiController::setToken),
        vtableSlot(&IAiController::setUserId),
        vtableSlot(&IAiController::setNode),
        vtableSlot(&IAiController::setMediaLibAllResources),
        vtableSlot(&IAiController::clear),
    };
}

std::vector<int> runtimeSlots()
{
    return {
        vtableSlot(&IZVRuntime::registerCallHandler), vtableSlot(&IZVRuntime::unregisterCallHandler),
        vtableSlot(&IZVRuntime::sendToServer),        vtableSlot(&IZVRuntime::sendToClients),
        vtableSlot(&IZVRuntime::isProxyServer),       vtableSlot(&IZVRuntime::isProxyClient),
        vtableSlot(&IZVRuntime::isLocalExecutor),     vtableSlot(&IZVRuntime::dispatcher),
        vtableSlot(&IZVRuntime::needsDispatch),
    };
}

// What a host that was built against these headers calls in the library that is installed.
bool libraryHasTheSameOrder()
{
    const char *const operations[] = {"setZVRuntime",
                                      "loadTheme",
                                      "switchLanguage",
                                      "resetMainWidget",
                                      "setTimeout",
                                      "setSingleTickTime",
                                      "setDomain",
                                      "setToken",
                                      "setUserId",
                                      "setNode",
                                      "setMediaLibAllResources",
                                      "clear"};
    const AiController controller;
    const void *const *table = nullptr;
    std::memcpy(&table, static_cast<const void *>(&controller), sizeof table);
    int place = controllerFirst;
    for (const char *const operation : operations) {
        Dl_info entry = {};
        if (dladdr(table[place++], &entry) == 0 || !entry.dli_sname)
            return false;
        const std::string name = std::to_string(std::char_traits<char>::length(operation)) + operation + 'E';
        if (std::string(entry.dli_sname).find("12AiController" + name) == std::string::npos) {
            std::printf("library: %s stands where %s belongs\n", entry.dli_sname, operation);
            return false;
        }
    }
    std::printf("library: the same order\n");
    return true;
}

} // namespace

// The order of the interfaces' virtual operations, as a host meets them.
int main()
{
    const bool controller = areInOrder("IAiController", controllerFirst, controllerSlots());
    const bool runtime = areInOrder("IZVRuntime", runtimeFirst, runtimeSlots());
    const bool library = libraryHasTheSameOrder();
    return controller && runtime && library ? 0 : 1;
}
