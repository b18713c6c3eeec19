#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "host/SessionInterface.h"

namespace refhost {

/// Why a plug-in could not be loaded or initialised. `what()` says all of it.
class PluginError : public std::runtime_error {
public:
    PluginError(const std::string& problem, const std::string& advice)
        : std::runtime_error(problem + "; " + advice), problem_(problem), advice_(advice) {}

    /// Which file, and what is wrong with it.
    const std::string& Problem() const { return problem_; }

    /// What to do.
    const std::string& Advice() const { return advice_; }

private:
    std::string problem_;
    std::string advice_;
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
