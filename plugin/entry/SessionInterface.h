#pragma once

#include "host/SessionInterface.h"
#include "host/Registration.h"
#include "host/Session.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// The version of the host interfaces that this plug-in speaks.
inline constexpr kelcore::int32 kInterfaceMajor = 1;
inline constexpr kelcore::int32 kInterfaceMinor = 9;

/// The plug-in behind the exported function, with one operation for each selector. The base class
/// holds the default results.
class SessionInterface {
public:
    virtual ~SessionInterface() = default;
    SessionInterface(const SessionInterface&) = delete;
    SessionInterface& operator=(const SessionInterface&) = delete;

    virtual SessionResult Initialize(IPlugInRegistrar* /*registrar*/) { return SessionResult::Ok; }
    virtual SessionResult Reserved() { return SessionResult::Ok; }
    virtual SessionResult Terminate() { return SessionResult::Ok; }
    virtual SessionResult SetFilePath(IHostFileRef* /*fileRef*/) {
        return SessionResult::NotImplemented;
    }
    virtual SessionResult ReadSession(IEditSession* /*session*/) {
        return SessionResult::NotImplemented;
    }
    virtual SessionResult WriteSession(IQuerySession* /*session*/) {
        return SessionResult::NotImplemented;
    }

    /// Holds the context of a write until the next call of the export.
    void HoldContext(IHostObject* context) { context_ = Retain(context); }
    void ReleaseContext() { context_.Reset(); }

protected:
    SessionInterface() = default;

private:
    HostReference<IHostObject> context_;
};

/// Handles one call of the export: releases what the last write held, checks selector and argument,
/// and passes the call on. Exceptions of the operations pass through.
SessionResult Dispatch(SessionInterface& plugIn, std::int32_t selector, void* argument);

/// The same, but catches every exception, traces it and returns the selector's failure: -10 for a
/// write, -4 for anything else.
SessionResult DispatchGuarded(SessionInterface& plugIn, std::int32_t selector,
                              void* argument) noexcept;

}  // namespace tses
