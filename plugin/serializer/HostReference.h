#pragma once

#include <boost/intrusive_ptr.hpp>
#include <utility>

#include "host/HostObject.h"

namespace tses {

inline void intrusive_ptr_add_ref(IHostObject* object) {
    object->AddReference();
}

/// A host object must not throw here; if it does, the process ends.
inline void intrusive_ptr_release(IHostObject* object) noexcept {
    object->Release();
}

/// A counted reference to a host object, or null. There are two ways in: `Retain` for what a host
/// call returned, which adds a reference, and `Adopt` for a reference that was passed in already
/// counted.
template <class Interface>
class HostReference {
public:
    HostReference() = default;

    Interface* operator->() const { return pointer_.get(); }
    Interface& operator*() const { return *pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }

    /// Releases the object, if there is one.
    void Reset() { pointer_.reset(); }

    /// The same object through another of its interfaces; null if it does not have that interface.
    template <class Other>
    HostReference<Other> As() const {
        return HostReference<Other>(dynamic_cast<Other*>(pointer_.get()), true);
    }

private:
    template <class Any>
    friend class HostReference;
    template <class Any>
    friend HostReference<Any> Retain(Any* raw);
    template <class Any>
    friend HostReference<Any> Adopt(Any* raw);

    HostReference(Interface* raw, bool addReference) : pointer_(raw, addReference) {}

    boost::intrusive_ptr<Interface> pointer_;
};

template <class Interface>
[[nodiscard]] HostReference<Interface> Retain(Interface* raw) {
    return HostReference<Interface>(raw, true);
}

template <class Interface>
[[nodiscard]] HostReference<Interface> Adopt(Interface* raw) {
    return HostReference<Interface>(raw, false);
}

}  // namespace tses
