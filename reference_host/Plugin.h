#pragma once

#include <filesystem>
#include <string>

#include "host/Session.h"
#include "host/SessionInterface.h"
#include "reference_host/PluginLibrary.h"

namespace refhost {

/// A plug-in that is ready to work: loaded and initialised. The destructor terminates and unloads
/// it. Use it from one thread at a time, and only one plug-in of a library at a time: the state
/// belongs to the library.
class Plugin {
public:
    /// @throws PluginError as `PluginLibrary`, or if the plug-in refuses to initialise.
    explicit Plugin(const std::filesystem::path& library = DefaultPluginPath());
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    /// Terminates the plug-in and initialises it again, so that nothing it did before affects what
    /// it does next.
    /// @throws PluginError if the plug-in refuses to initialise
    void Restart();

    /// Calls the plug-in with any selector and argument.
    std::int32_t Call(std::int32_t selector, void* argument) {
        return library_.Call(selector, argument);
    }

    /// Names the file, then reads it into `session` or writes `session` to it. The path is passed
    /// on as it is; an empty one fails.
    tses::SessionResult Read(const std::u16string& path, tses::IEditSession& session);
    tses::SessionResult Write(const std::u16string& path, tses::IQuerySession& session);

    /// Makes the plug-in let go of the context of its last write, if it holds one.
    void ReleaseContext();

private:
    void Initialize();
    tses::SessionResult Call(tses::SessionSelector selector, void* argument);
    tses::SessionResult SetFilePath(const std::u16string& path);

    PluginLibrary library_;
    std::string name_;
};

}  // namespace refhost
