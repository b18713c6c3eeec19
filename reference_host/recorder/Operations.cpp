#include "reference_host/recorder/Operations.h"

#include <concepts>
#include <type_traits>

#include "host/Implementation.h"

namespace refhost {
namespace {

using namespace tses;

template <class Interface, class Result, class... Parameters>
consteval HostOperation Describe(std::string_view interfaceName, std::string_view name,
                                 Result (Interface::*)(Parameters...)) {
    return {interfaceName, name, std::derived_from<std::remove_pointer_t<Result>, IHostObject>,
            std::is_arithmetic_v<Result>};
}

constexpr HostOperation kOperations[] = {
#define OPERATION(interface, name) Describe(#interface, #name, &interface::name),
#include "host/SessionOperations.def"
};

}  // namespace

std::span<const HostOperation> HostOperations() {
    return kOperations;
}

}  // namespace refhost
