#pragma once

#include "host/HostObject.h"

namespace tses {

/// One media file that clips refer to. From `IEditSession::GetFile`.
struct IEditFile : IHostObject {
    /// Where the media is: the stored full path, or the one found from the session's own place. It
    /// need not exist, and may be empty.
    virtual void SetPath(const kelcore::char16* path) = 0;
    /// The id that crash recovery knows the file by. Called only when not empty.
    virtual void SetRecoveryId(const kelcore::char16* recoveryId) = 0;
    /// The identifier of the handler that imported the file. Called only when not empty.
    virtual void SetMediaHandler(const kelcore::char16* handlerId) = 0;
    /// What the importer wants back, as it was. Called only when not empty.
    virtual void SetImporterPrivateSettings(const kelcore::char16* settings) = 0;

protected:
    ~IEditFile() = default;
};

/// One media file that clips refer to. From `IQuerySession::GetFile`. A null text counts as empty.
struct IQueryFile : IHostObject {
    /// The id that clips refer to, unique among the session's files.
    virtual kelcore::uint32 GetId() = 0;
    /// The full path. It is stored as it is and once more relative to the session file. Empty:
    /// neither.
    virtual IHostString* GetPath() = 0;
    /// The id that crash recovery knows the file by. Empty: not stored.
    virtual IHostString* GetRecoveryId() = 0;
    /// The identifier of the handler that imported the file. Stored as its readable name where it
    /// has one.
    virtual IHostString* GetMediaHandler() = 0;
    /// What the importer wants back. Empty: not stored.
    virtual IHostString* GetImporterPrivateSettings() = 0;

protected:
    ~IQueryFile() = default;
};

}  // namespace tses
