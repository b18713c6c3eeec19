#include <dlfcn.h>

#include <chrono>
#include <cstdio>

#include "host/Bases.h"
#include "host/SessionInterface.h"

// orvo-bench-load LIBRARY: how many milliseconds it takes to load the plug-in as the reference host
// does, to initialise it and to have it register itself. This is a program of its own because
// nothing that the plug-in needs may be loaded before.

namespace {

struct Registrar final : tses::PlugInRegistrarBase {
    bool registered = false;

    void RegisterSaveFormat(const kelcore::char16*, const kelcore::char16* const*,
                            kelcore::int32) override {
        registered = true;
    }
};

tses::SessionInterfaceFunction* Load(const char* path) {
    void* const library = dlopen(path, RTLD_LAZY | RTLD_LOCAL);
    void* const symbol = library != nullptr ? dlsym(library, tses::kSessionInterfaceName) : nullptr;
    if (symbol == nullptr) {
        std::fprintf(stderr, "orvo-bench-load: %s\n", dlerror());
        return nullptr;
    }
    return reinterpret_cast<tses::SessionInterfaceFunction*>(symbol);
}

void Call(tses::SessionInterfaceFunction* function, tses::SessionSelector selector,
          tses::IPlugInRegistrar* registrar) {
    function(static_cast<kelcore::int32>(selector), registrar);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: orvo-bench-load LIBRARY\n", stderr);
        return 2;
    }
    Registrar registrar;
    const auto start = std::chrono::steady_clock::now();
    tses::SessionInterfaceFunction* const function = Load(arguments[1]);
    if (function == nullptr) {
        return 1;
    }
    Call(function, tses::SessionSelector::Initialize, &registrar);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    Call(function, tses::SessionSelector::Terminate, nullptr);
    std::printf("%.6f\n", took.count());
    return registrar.registered ? 0 : 1;
}
