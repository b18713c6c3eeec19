#pragma once

#include <dlfcn.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "host/HostObject.h"
#include "host/Registration.h"
#include "host/Session.h"
#include "host/SessionInterface.h"
#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Paths.h"

// What every host has: objects that are counted, texts, a path, and the library.

namespace example {

using namespace kelcore;

/// How many references the plug-in holds to all objects together; 0 outside a call.
inline int references = 0;

/// The plug-in counts references to what it is given. Here everything lives longer than the calls,
/// so the count only proves that all references came back.
template <class Interface>
struct Counted : Interface {
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    void AddReference() override { ++references; }
    void Release() override { --references; }

protected:
    ~Counted() = default;
};

struct Text final : Counted<tses::IHostString> {
    std::u16string value;

    void UnusedSlot3() override {}
    const char16* GetData() override { return value.data(); }
    uint32 GetLength() override { return static_cast<uint32>(value.size()); }
};

struct FileRef final : Counted<tses::IHostFileRef> {
    Text path;

    void UnusedSlot3() override {}
    tses::IHostString* GetPath() override { return &path; }
};

struct Registrar final : Counted<tses::IPlugInRegistrar> {
    void UnusedSlot3() override {}
    void DeclareInterfaceVersion(int32 /*a*/, int32 /*b*/) override {}
    void UnusedSlot5() override {}
    void SetPlugInIdentity(const char* /*guid*/, const char16* /*name*/) override {}
    void RegisterOpenFormat(const char16* /*name*/, const char16* const* /*extensions*/,
                            int32 /*count*/) override {}
    void RegisterSaveFormat(const char16* /*name*/, const char16* const* /*extensions*/,
                            int32 /*count*/) override {}
};

/// The loaded plug-in. The arguments are passed as the interface that the selector asks for: the
/// function takes the address alone.
class Plugin {
public:
    /// @throws std::runtime_error if there is no plug-in of that name
    explicit Plugin(const char* library) : handle_(dlopen(library, RTLD_NOW | RTLD_LOCAL)) {
        void* const symbol =
            handle_ != nullptr ? dlsym(handle_, tses::kSessionInterfaceName) : nullptr;
        if (symbol == nullptr) {
            throw std::runtime_error(dlerror());
        }
        function_ = reinterpret_cast<tses::SessionInterfaceFunction*>(symbol);
        // Before Initialize, which asks once. Without it instrument tracks are passed over.
        kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", true);
        if (!Call(tses::SessionSelector::Initialize,
                  static_cast<tses::IPlugInRegistrar*>(&registrar_))) {
            throw std::runtime_error("the plug-in refuses to initialise");
        }
    }
    ~Plugin() {
        Call(tses::SessionSelector::Terminate, nullptr);
        dlclose(handle_);
    }
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    bool Read(std::string_view path, tses::IEditSession& session) {
        return SetPath(path) && Call(tses::SessionSelector::ReadSession, &session);
    }
    bool Write(std::string_view path, tses::IQuerySession& session) {
        return SetPath(path) && Call(tses::SessionSelector::WriteSession, &session);
    }

private:
    bool SetPath(std::string_view path) {
        file_.path.value = PathFromBytes(path);
        return Call(tses::SessionSelector::SetFilePath, static_cast<tses::IHostFileRef*>(&file_));
    }
    bool Call(tses::SessionSelector selector, void* argument) {
        return function_(static_cast<int32>(selector), argument) == 0;
    }

    void* handle_;
    tses::SessionInterfaceFunction* function_ = nullptr;
    Registrar registrar_;
    FileRef file_;
};

}  // namespace example
