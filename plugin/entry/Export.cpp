#include "plugin/entry/SessionNativeInterface.h"

extern "C" std::int32_t SessionInterface(std::int32_t selector, void* argument) {
    static tses::SessionNativeInterface plugIn;
    return static_cast<std::int32_t>(tses::DispatchGuarded(plugIn, selector, argument));
}
