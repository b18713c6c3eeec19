#include <dlfcn.h>

#include <chrono>
#include <cstdio>

#include "host/Registration.h"
#include "host/SessionInterface.h"

// orvo-bench-load LIBRARY: how many milliseconds it takes to load the plug-in, to initialise it and
// to have it register itself. A program of its own, because nothing of what the plug-in needs may
// be loaded before.

namespace {

struct Registrar final : tses::IPlugInRegistrar {
    bool registered = false;

    void AddReference() override {}
    void Release() override {}
    void UnusedSlot3() override {}
    void DeclareInterfaceVersion(kelcore::int32, kelcore::int32) override {}
    void UnusedSlot5() override {}
    void SetPlugInIdentity(const char*, const kelcore::char16*) override {}
    void RegisterOpenFormat(const kelcore::char16*, const kelcore::char16* const*,
                            kelcore::int32) override {}
    void RegisterSaveFormat(const kelcore::char16*, const kelcore::char16* const*,
                            kelcore::int32) override {
        registered = true;
    }
};

bool Load(const char* path, tses::IPlugInRegistrar* registrar) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    void* const symbol = library != nullptr ? dlsym(library, tses::kSessionInterfaceName) : nullptr;
    if (symbol == nullptr) {
        std::fprintf(stderr, "orvo-bench-load: %s\n", dlerror());
        return false;
    }
    auto* const function = reinterpret_cast<tses::SessionInterfaceFunction*>(symbol);
    const auto initialize = static_cast<kelcore::int32>(tses::SessionSelector::Initialize);
    return function(initialize, registrar) == 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: orvo-bench-load LIBRARY\n", stderr);
        return 2;
    }
    Registrar registrar;
    const auto start = std::chrono::steady_clock::now();
    const bool loaded = Load(arguments[1], &registrar) && registrar.registered;
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    std::printf("%.6f\n", took.count());
    return loaded ? 0 : 1;
}
