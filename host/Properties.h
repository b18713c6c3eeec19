#pragma once

#include "host/HostObject.h"

namespace tses {

/// The session's properties, texts under a key. From `IEditSession::GetProperties`.
struct IEditProperties : IHostObject {
    /// `value` has no white space at its ends. Either may be empty.
    virtual void SetProperty(const kelcore::char16* key, const kelcore::char16* value) = 0;

protected:
    ~IEditProperties() = default;
};

/// The session's properties. From `IQuerySession::GetProperties`.
struct IQueryProperties : IHostObject {
    virtual kelcore::uint32 GetCount() = 0;
    virtual IHostString* GetKey(kelcore::uint32 index) = 0;
    /// The value under a key that `GetKey` gave. Null or empty: stored without a value.
    virtual IHostString* GetValue(const kelcore::char16* key) = 0;

protected:
    ~IQueryProperties() = default;
};

/// What the host keeps with a clip, as one text. From `IEditAudioClip::GetProperties`.
struct IEditClipProperties : IHostObject {
    /// Not called when the file does not say.
    virtual void SetProperties(const kelcore::char16* text) = 0;

protected:
    ~IEditClipProperties() = default;
};

/// What the host keeps with a clip, as one text. From `IQueryAudioClip::GetProperties`.
struct IQueryClipProperties : IHostObject {
    /// Asked only when not empty. Null: stored as empty.
    virtual IHostString* GetPropertiesText() = 0;
    /// True: nothing is stored.
    virtual bool IsEmpty() = 0;

protected:
    ~IQueryClipProperties() = default;
};

}  // namespace tses
