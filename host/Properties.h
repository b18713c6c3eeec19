#pragma once

#include "host/HostObject.h"

namespace tses {

/// The session's properties, texts under a key. From `IEditSession::GetProperties`.
struct IEditProperties : IHostObject {
    /// One property: its key and its value. `value` has no white space at its ends. Either may be
    /// empty.
    virtual void SetProperty(const kelcore::char16* key, const kelcore::char16* value) = 0;

protected:
    ~IEditProperties() = default;
};

/// The session's properties. From `IQuerySession::GetProperties`.
struct IQueryProperties : IHostObject {
    /// How many properties there are.
    virtual kelcore::uint32 GetCount() = 0;
    /// The key of a property.
    virtual IHostString* GetKey(kelcore::uint32 index) = 0;
    /// The value under a key that `GetKey` gave. Null or empty: stored without a value.
    virtual IHostString* GetValue(const kelcore::char16* key) = 0;

protected:
    ~IQueryProperties() = default;
};

/// What the host keeps with a clip, as one text. From `IEditAudioClip::GetProperties`.
struct IEditClipProperties : IHostObject {
    /// The text, as the host gave it. Not called if the file does not say.
    virtual void SetProperties(const kelcore::char16* text) = 0;

protected:
    ~IEditClipProperties() = default;
};

/// What the host keeps with a clip, as one text. From `IQueryAudioClip::GetProperties`.
struct IQueryClipProperties : IHostObject {
    /// The text. Asked only when `IsEmpty` is false. Null: stored as empty. It is stored as an
    /// attribute: the save fails if it takes more than about 1 MiB there, in UTF-8 and with the
    /// references that some characters need.
    virtual IHostString* GetPropertiesText() = 0;
    /// Whether there is nothing to store.
    virtual bool IsEmpty() = 0;

protected:
    ~IQueryClipProperties() = default;
};

}  // namespace tses
