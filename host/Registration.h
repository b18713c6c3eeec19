#pragma once

#include "host/HostObject.h"

namespace tses {

/// Receives what the plug-in is and which files it handles. Passed with selector 0.
struct IPlugInRegistrar : IHostObject {
    virtual void UnusedSlot3() = 0;
    /// The version of these interfaces that the plug-in speaks: 1, 9. Called twice with the same
    /// pair, before and after the identity.
    virtual void DeclareInterfaceVersion(kelcore::int32 a, kelcore::int32 b) = 0;
    virtual void UnusedSlot5() = 0;
    /// Who the plug-in is. `guid`: 36 ASCII characters and a zero, without braces. `displayName`:
    /// localised.
    virtual void SetPlugInIdentity(const char* guid, const kelcore::char16* displayName) = 0;
    /// A format that sessions can be read from. `formatName`: localised. `extensions`: the
    /// `extensionCount` file name extensions, without a dot.
    virtual void RegisterOpenFormat(const kelcore::char16* formatName,
                                    const kelcore::char16* const* extensions,
                                    kelcore::int32 extensionCount) = 0;
    /// A format that sessions can be written to. Arguments as for `RegisterOpenFormat`.
    virtual void RegisterSaveFormat(const kelcore::char16* formatName,
                                    const kelcore::char16* const* extensions,
                                    kelcore::int32 extensionCount) = 0;

protected:
    ~IPlugInRegistrar() = default;
};

/// Names the file of the reads and writes that follow. Passed with selector 3.
struct IHostFileRef : IHostObject {
    virtual void UnusedSlot3() = 0;
    /// The full path of the session file. Null or empty clears the stored path, so that a read or
    /// write fails.
    virtual IHostString* GetPath() = 0;

protected:
    ~IHostFileRef() = default;
};

}  // namespace tses
