#pragma once

#include <span>
#include <string_view>

namespace refhost {

/// One operation that a recorder knows.
struct HostOperation {
    std::string_view interfaceName;  ///< the interface that declares it
    std::string_view name;
    bool returnsObject;  ///< a host object or a host string, so it can return null
    bool returnsNumber;  ///< a number or a truth value
};

/// Every operation of the interfaces that a recorder stands in for, in slot order, except the
/// counting of references and the unused slots.
std::span<const HostOperation> HostOperations();

}  // namespace refhost
