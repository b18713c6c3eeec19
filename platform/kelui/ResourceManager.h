#pragma once

#include <memory>
#include <string>

/// Where a plug-in finds the resources that belong to its own library.
namespace kelui {

/// A loaded library, as the system's loader names it; null for none.
using ModuleHandle = void*;

/// The module that holds `address` (of one of its functions); null if none does. Its reference
/// count is not touched, so the handle is good for as long as the module stays loaded for another
/// reason.
ModuleHandle ModuleOfAddress(const void* address) noexcept;

/// Finds the resources of one module: the files of the folder that has the module's own name, with
/// ".resources" in place of its extension, beside it.
class OS_ResourceManager {
public:
    explicit OS_ResourceManager(ModuleHandle module);

    ModuleHandle Module() const noexcept { return module_; }

    /// The module's own file, UTF-16; empty if the handle names no module.
    const std::u16string& ModulePath() const noexcept { return modulePath_; }

    /// The resource folder's path; it need not exist.
    const std::u16string& ResourceFolder() const noexcept { return resourceFolder_; }

private:
    ModuleHandle module_;
    std::u16string modulePath_;
    std::u16string resourceFolder_;
};

/// Makes `manager` the process's plug-in resource manager, deleting the one before it. Null removes
/// it.
void InstallPlugInResourceManager(std::unique_ptr<OS_ResourceManager> manager);

/// The installed one, owned by the platform; null if there is none.
OS_ResourceManager* PlugInResourceManager() noexcept;

}  // namespace kelui
