#pragma once

#include <type_traits>

#include "host/Counted.h"
#include "host/Implementation.h"

namespace refhost {

/// An object that accepts everything and returns nothing, like the bases of hosts. Unlike them it
/// casts to no private interface.
template <class Interface>
struct PublicOnly final : tses::Counted<tses::Implementation<Interface, PublicOnly<Interface>>> {
    template <class Declaring, class Result, class... Parameters>
    static Result Answer(const char* /*name*/, Result (Declaring::* /*operation*/)(Parameters...),
                         std::type_identity_t<Parameters>... /*arguments*/) {
        return Result();
    }
};

}  // namespace refhost
