#pragma once

#include <memory>
#include <string>

/// Locates the resources of a plug-in's own library.
namespace kelui {

/// The system loader's handle of a loaded library, or null.
using ModuleHandle = void*;

/// The module that contains `address`, for example one of its functions; null if there is none.
/// Adds no reference: the handle is valid as long as something else keeps the module loaded.
ModuleHandle ModuleOfAddress(const void* address) noexcept;

/// Locates the resources of one module: the folder next to it that has the module's name with
/// ".resources" in place of the extension.
class OS_ResourceManager {
public:
    explicit OS_ResourceManager(ModuleHandle module);

    ModuleHandle Module() const noexcept { return module_; }

    /// The path of the module's file; empty if the handle names no module.
    const std::u16string& ModulePath() const noexcept { return modulePath_; }

    /// The path of the resource folder, which need not exist.
    const std::u16string& ResourceFolder() const noexcept { return resourceFolder_; }

private:
    ModuleHandle module_;
    std::u16string modulePath_;
    std::u16string resourceFolder_;
};

/// Makes `manager` the process's plug-in resource manager and deletes the previous one. Null
/// removes it.
void InstallPlugInResourceManager(std::unique_ptr<OS_ResourceManager> manager);

/// The installed manager, owned by the platform; null if there is none.
OS_ResourceManager* PlugInResourceManager() noexcept;

}  // namespace kelui
