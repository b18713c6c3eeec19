#pragma once

#include <dlfcn.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/Bases.h"
#include "host/SessionInterface.h"
#include "host/Text.h"
#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Types.h"

// What every host has: a path, a log target, and the library.

namespace example {

using kelcore::char16;
using kelcore::int32;
using kelcore::int64;
using kelcore::uint32;

struct FileRef final : tses::HostFileRefBase {
    tses::HostText path;

    tses::IHostString* GetPath() override { return &path; }
};

/// Prints what is wrong in a document, and where, and why a file cannot be read.
struct LogTarget final : tses::HostLogTargetBase {
    void LogMessage(tses::IHostString* text) override {
        const std::string line = kelcore::UTF16to8({text->GetData(), text->GetLength()});
        std::fprintf(stderr, "%s", line.c_str());
    }
};

/// The loaded library.
class Library {
public:
    /// @throws std::runtime_error if there is no plug-in of that name
    explicit Library(const char* name) : handle_(dlopen(name, RTLD_NOW | RTLD_LOCAL)) {
        void* const symbol =
            handle_ != nullptr ? dlsym(handle_, tses::kSessionInterfaceName) : nullptr;
        if (symbol == nullptr) {
            const char* const reason = dlerror();
            const std::string message = reason != nullptr ? reason : "this is no plug-in";
            Close();
            throw std::runtime_error(message);
        }
        function_ = reinterpret_cast<tses::SessionInterfaceFunction*>(symbol);
    }
    ~Library() { Close(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    bool Call(tses::SessionSelector selector, void* argument) {
        return function_(static_cast<int32>(selector), argument) == 0;
    }

private:
    void Close() {
        if (handle_ != nullptr) {
            dlclose(handle_);
        }
    }

    void* handle_;
    tses::SessionInterfaceFunction* function_ = nullptr;
};

/// The initialised plug-in. The exported function takes any address, so each argument is first cast
/// to the interface that the selector asks for.
class Plugin {
public:
    /// @throws std::runtime_error like `Library`, or if the plug-in refuses to initialise
    explicit Plugin(const char* library) : library_(library) {
        // Initialize looks at the feature once. Without it the plug-in skips instrument tracks.
        kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", true);
        if (!library_.Call(tses::SessionSelector::Initialize,
                           static_cast<tses::IPlugInRegistrar*>(&registrar_))) {
            Terminate();
            throw std::runtime_error("the plug-in refuses to initialise");
        }
    }
    ~Plugin() { Terminate(); }
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    bool Read(std::string_view path, tses::IEditSession& session) {
        return SetPath(path) && library_.Call(tses::SessionSelector::ReadSession, &session);
    }
    bool Write(std::string_view path, tses::IQuerySession& session) {
        return SetPath(path) && library_.Call(tses::SessionSelector::WriteSession, &session);
    }

private:
    bool SetPath(std::string_view path) {
        file_.path.value = kelcore::PathFromBytes(path);
        return library_.Call(tses::SessionSelector::SetFilePath,
                             static_cast<tses::IHostFileRef*>(&file_));
    }
    void Terminate() { library_.Call(tses::SessionSelector::Terminate, nullptr); }

    Library library_;
    tses::PlugInRegistrarBase registrar_;
    FileRef file_;
};

}  // namespace example
