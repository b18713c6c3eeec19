#include "reference_host/PluginLibrary.h"

#include <dlfcn.h>

#include <cstdlib>
#include <string>

namespace refhost {
namespace {

constexpr char kPluginName[] = "OrvoNative.so";
constexpr char kPluginVariable[] = "ORVO_PLUGIN";
constexpr char kHowToName[] = "name the built plug-in with the environment variable ORVO_PLUGIN";

std::string LoaderMessage() {
    const char* const message = dlerror();
    return message != nullptr ? message : "the system does not say why";
}

void* Load(const std::filesystem::path& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        throw PluginError("no plug-in at " + path.string(),
                          std::string("build it, or ") + kHowToName);
    }
    // With its folder, so that the loader does not search elsewhere. Lazily, which saves 0.7 of 12
    // ms: most functions of the libraries that come with it are never called.
    const std::filesystem::path absolute = std::filesystem::absolute(path);
    if (void* const handle = dlopen(absolute.c_str(), RTLD_LAZY | RTLD_LOCAL)) {
        return handle;
    }
    throw PluginError("cannot load " + path.string() + " as a library (" + LoaderMessage() + ")",
                      kHowToName);
}

/// A program is known by the name that started it, and that need not be a path.
std::filesystem::path FolderOfThisCode() {
    static const int anchor = 0;
    Dl_info info{};
    const bool isLibrary = dladdr(&anchor, &info) != 0 && info.dli_fname != nullptr &&
                           std::filesystem::path(info.dli_fname).has_parent_path();
    std::error_code error;
    const std::filesystem::path file =
        isLibrary ? std::filesystem::canonical(info.dli_fname, error) : std::filesystem::path();
    return (file.empty() ? std::filesystem::read_symlink("/proc/self/exe") : file).parent_path();
}

}  // namespace

std::filesystem::path DefaultPluginPath() {
    const char* const named = std::getenv(kPluginVariable);
    if (named != nullptr && *named != '\0') {
        return named;
    }
    const std::filesystem::path folder = FolderOfThisCode();
    const std::filesystem::path beside = folder / kPluginName;
    std::error_code ignored;
    return std::filesystem::exists(beside, ignored)
               ? beside
               : (folder / "../lib" / kPluginName).lexically_normal();
}

PluginLibrary::PluginLibrary(const std::filesystem::path& path) : handle_(Load(path)) {
    void* const symbol = dlsym(handle_, tses::kSessionInterfaceName);
    if (symbol == nullptr) {
        dlclose(handle_);
        throw PluginError(path.string() +
                              " is a library but no session plug-in: it lacks the function " +
                              tses::kSessionInterfaceName,
                          kHowToName);
    }
    function_ = reinterpret_cast<tses::SessionInterfaceFunction*>(symbol);
}

PluginLibrary::~PluginLibrary() {
    dlclose(handle_);
}

}  // namespace refhost
