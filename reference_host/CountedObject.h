#pragma once

#include <cstddef>

#include "host/HostObject.h"
#include "reference_host/LiveNodes.h"

namespace refhost {

/// Ends the process and says why on standard error: an object was released more often than it was
/// referenced, so somebody may use it after its end.
[[noreturn]] void EndAtExcessRelease() noexcept;

/// A host object that stands alone. It begins with one reference, which its maker holds; releasing
/// the last one destroys it.
template <class Interface>
class CountedObject : public Interface {
public:
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    void AddReference() override { ++references_; }
    void Release() override {
        if (references_ == 0) {
            EndAtExcessRelease();
        }
        if (--references_ == 0) {
            delete this;
        }
    }

protected:
    CountedObject() = default;
    virtual ~CountedObject() = default;

private:
    const LiveNode live_;
    std::size_t references_ = 1;
};

}  // namespace refhost
