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

    /// Registers the plug-in's identity and format with the host and makes the serializer. Succeeds
    /// even if the XML library does not start; reads and writes then fail.
    SessionResult Initialize(IPlugInRegistrar* registrar) override;
    SessionResult Reserved() override { return SessionResult::Ok; }

    /// Undoes the last Initialize, even one that failed halfway. Reads and writes then fail until
    /// the next Initialize.
    SessionResult Terminate() override;

    /// Keeps the path. If getting it throws, the kept path is empty, so that no later call works on
    /// the previous file.
    SessionResult SetFilePath(IHostFileRef* fileRef) override;

    /// Without a serializer both succeed and do nothing. After `Terminate` both fail, so that the
    /// plug-in never reports a save that did not happen.
    SessionResult ReadSession(IEditSession* session) override;
    SessionResult WriteSession(IQuerySession* session) override;

private:
    std::u16string filePath_;
    std::unique_ptr<Serializer> serializer_;
    bool initialised_ = false;  // there is something to undo
    bool terminated_ = false;   // reads and writes fail
};

/// Another host service, which the host's support code may have given to this module. `Terminate`
/// releases it.
HostReference<IHostObject>& ModuleHostService();

}  // namespace tses
