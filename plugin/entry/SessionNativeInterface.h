#pragma once

#include <memory>
#include <string>

#include "plugin/entry/SessionInterface.h"
#include "plugin/serializer/Serializer.h"

namespace tses {

/// The plug-in: registers the format "orvo" and reads and writes its files.
class SessionNativeInterface final : public SessionInterface {
public:
    SessionNativeInterface() = default;

    /// Registers identity and format with the host and makes the serializer. An XML library that
    /// does not start does not stop it: reads and writes then fail.
    SessionResult Initialize(IPlugInRegistrar* registrar) override;
    SessionResult Reserved() override { return SessionResult::Ok; }

    /// Undoes the last Initialize, also one that failed half way. From here on, until the next one,
    /// reads and writes fail.
    SessionResult Terminate() override;

    /// Keeps the path; an exception while it is taken leaves none, so that no later call works on
    /// the file before.
    SessionResult SetFilePath(IHostFileRef* fileRef) override;

    /// Success with nothing done while there is no serializer; failure after `Terminate`, so that a
    /// host is never told of a save that did not happen.
    SessionResult ReadSession(IEditSession* session) override;
    SessionResult WriteSession(IQuerySession* session) override;

private:
    std::u16string filePath_;
    std::unique_ptr<Serializer> serializer_;
    bool initialised_ = false;  // there is something to undo
    bool terminated_ = false;   // no read or write may be claimed
};

/// A further host service that the host's support code may have given this module; released by
/// `Terminate`.
HostReference<IHostObject>& ModuleHostService();

}  // namespace tses
