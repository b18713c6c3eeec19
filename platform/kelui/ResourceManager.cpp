#include "platform/kelui/ResourceManager.h"

#include <dlfcn.h>
#include <link.h>

#include <atomic>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/kelcore/Paths.h"

namespace kelui {
namespace {

constexpr std::u16string_view kResourceExtension = u".resources";

/// The loader knows a library by the path it was loaded from, and the program itself by an empty
/// path.
std::u16string PathOf(ModuleHandle module) {
    link_map* entry = nullptr;
    if (module == nullptr || dlinfo(module, RTLD_DI_LINKMAP, &entry) != 0) {
        return {};
    }
    const std::string_view path = entry->l_name;
    if (path.empty()) {
        std::error_code error;
        return kelcore::PathFromBytes(
            std::filesystem::read_symlink("/proc/self/exe", error).native());
    }
    return kelcore::FileUtils::PrepAsLongPathName(kelcore::PathFromBytes(path));
}

std::u16string ResourceFolderFor(const std::u16string& modulePath) {
    if (modulePath.empty()) {
        return {};
    }
    const std::size_t name = modulePath.rfind(u'/') + 1;
    const std::size_t extension = modulePath.rfind(u'.');
    const bool hasExtension = extension != std::u16string::npos && extension > name;
    return modulePath.substr(0, hasExtension ? extension : modulePath.size())
        .append(kResourceExtension);
}

std::atomic<OS_ResourceManager*> installed{nullptr};

}  // namespace

ModuleHandle ModuleOfAddress(const void* address) noexcept {
    Dl_info info;
    void* entry = nullptr;
    // The loader's entry of a module is its handle. dlopen would return the same but add a
    // reference.
    return dladdr1(address, &info, &entry, RTLD_DL_LINKMAP) != 0 ? entry : nullptr;
}

OS_ResourceManager::OS_ResourceManager(ModuleHandle module)
    : module_(module),
      modulePath_(PathOf(module)),
      resourceFolder_(ResourceFolderFor(modulePath_)) {}

void InstallPlugInResourceManager(std::unique_ptr<OS_ResourceManager> manager) {
    const std::unique_ptr<OS_ResourceManager> before(installed.exchange(manager.release()));
}

OS_ResourceManager* PlugInResourceManager() noexcept {
    return installed.load();
}

}  // namespace kelui
