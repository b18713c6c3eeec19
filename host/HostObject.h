#pragma once

#include "platform/kelcore/Types.h"

/// The interfaces between the plug-in and its host. The host implements all of them; the plug-in
/// calls.
///
/// The declaration order of an interface's operations is the order of the slots of its table and
/// never changes; docs/host-interfaces.md lists them all. What holds for every operation, unless it
/// says otherwise:
///  - Calls come on the thread that called `SessionInterface`, one at a time, and only during that
///    call.
///  - A returned object carries no reference for the caller. The caller adds its own at once; the
///    host keeps the object alive at least until then.
///  - A returned object may be null: the thing does not exist, and the caller goes on without it.
///  - A text argument is UTF-16, ends with a zero, is never null, and belongs to the caller; a host
///    that keeps it copies it during the call. The same holds for arrays and byte blocks, whose
///    pointer may be null only when their count is zero.
///  - An index runs from 0 to the matching count less 1.
///  - Positions and lengths on the timeline and in media are counts of samples at the session's
///    rate.
///  - An id or slot index of 4294967295, or -1 where it is signed, names nothing.
///  - The objects have run-time type information: the plug-in casts them to the `...Private`
///    interfaces, and crashes on an object without it.
///  - An exception thrown by an operation ends the request with its failure code, except by
///    `Release`, where it ends the process.
namespace tses {

/// A host object lives as long as somebody holds a reference to it.
struct IHostObject {
    /// Adds one reference.
    virtual void AddReference() = 0;
    /// Gives one reference back; the object may be gone afterwards. Must not throw.
    virtual void Release() = 0;

protected:
    ~IHostObject() = default;
};

/// A text that the host owns. It does not change while it is referenced.
struct IHostString : IHostObject {
    virtual void UnusedSlot3() = 0;
    /// The UTF-16 code units. They need not end with a zero; null is allowed when the length is 0.
    virtual const kelcore::char16* GetData() = 0;
    /// How many code units there are, without any ending zero.
    virtual kelcore::uint32 GetLength() = 0;

protected:
    ~IHostString() = default;
};

}  // namespace tses
