#pragma once

#include <filesystem>
#include <stdexcept>

#include "host/SessionInterface.h"

namespace refhost {

/// Why a plug-in could not be loaded or initialised: which file, what is wrong with it, what to do.
class PluginError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The path of the plug-in: the value of the environment variable ORVO_PLUGIN, else OrvoNative.so
/// in the folder of the program or library that holds this code, else in ../lib beside that folder.
std::filesystem::path DefaultPluginPath();

/// A loaded plug-in library; unloaded by the destructor.
class PluginLibrary {
public:
    /// @throws PluginError if the file does not exist, is not a library or lacks the function.
    explicit PluginLibrary(const std::filesystem::path& path);
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    /// Calls the library's function. Any selector and argument may be tried.
    std::int32_t Call(std::int32_t selector, void* argument) const {
        return function_(selector, argument);
    }

private:
    void* handle_;
    tses::SessionInterfaceFunction* function_ = nullptr;
};

}  // namespace refhost
