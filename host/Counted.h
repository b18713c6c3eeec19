#pragma once

#include <atomic>
#include <cassert>
#include <cstdint>
#include <memory>
#include <utility>

#include "host/HostObject.h"

namespace tses {

/// Counts the references to a host's object, and deletes the object with the last one.
///
/// An object starts with one reference, which belongs to its creator. So there are two ways to own
/// one:
///  - On the heap, by `MakeOwned`: the `Owned` pointer holds the creator's reference. The object
///    lives until that pointer is gone and the plug-in has given its references back.
///  - As a member or a variable: the creator never gives its reference back, and the object lives
///    as long as its scope. The scope has to last until the plug-in has given its references back,
///    which it has done when the call of `SessionInterface` returns; only the context of a write
///    (`IQuerySession::GetContext`) has to last until the next call.
///
/// An object that goes too early fails an assertion, in a build that has them.
///
/// References can be added and given back on any thread.
template <class Interface>
class Counted : public Interface {
public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    void AddReference() final { references_.fetch_add(1, std::memory_order_relaxed); }
    void Release() final {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

    /// How many references there are, the creator's included.
    std::uint32_t ReferenceCount() const { return references_.load(std::memory_order_relaxed); }

protected:
    virtual ~Counted() { assert(ReferenceCount() <= 1 && "the plug-in still refers to it"); }

private:
    std::atomic<std::uint32_t> references_ = 1;
};

/// Gives back the reference that an `Owned` pointer holds.
struct GiveBack {
    void operator()(IHostObject* object) const { object->Release(); }
};

/// Holds its creator's reference to an object on the heap.
template <class Object>
using Owned = std::unique_ptr<Object, GiveBack>;

/// Makes an object on the heap. `Object` derives from a base of host/Bases.h.
template <class Object, class... Arguments>
Owned<Object> MakeOwned(Arguments&&... arguments) {
    return Owned<Object>(new Object(std::forward<Arguments>(arguments)...));
}

}  // namespace tses
