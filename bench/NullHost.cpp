#include "bench/NullHost.h"

#include <type_traits>

#include "host/Implementation.h"

namespace bench {
namespace {

using namespace tses;

/// The one object of its kind.
template <class Object>
constinit Object theNull;

template <class Interface>
struct Null final : Implementation<Interface, Null<Interface>> {
    void AddReference() override {}
    void Release() override {}

    template <class Declaring, class Result, class... Parameters>
    static Result Answer(const char* /*name*/, Result (Declaring::* /*operation*/)(Parameters...),
                         std::type_identity_t<Parameters>... /*arguments*/) {
        if constexpr (!std::is_void_v<Result>) {
            using Object = std::remove_pointer_t<Result>;
            return &theNull<Null<typename WholeInterface<Object>::type>>;
        }
    }
};

}  // namespace

IEditSession& NullHost() {
    return theNull<Null<IEditSession>>;
}

}  // namespace bench
