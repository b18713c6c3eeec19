#include "platform/kelui/ResourceManager.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Paths.h"

namespace kelui {
namespace {

std::string Bytes(const std::u16string& path) {
    return kelcore::PathToBytes(path);
}

template <typename Function>
const void* AddressOf(Function* function) {
    return reinterpret_cast<const void*>(function);
}

/// A function of the program itself, not of a library.
void OfThisProgram() {}

TEST(ModuleOfAddress, IsTheHandleThatTheLoaderGives) {
    void* const module = ModuleOfAddress(AddressOf(&kelcore::GetClientBuildNumber));
    ASSERT_NE(module, nullptr);
    const OS_ResourceManager manager(module);
    void* const handle = dlopen(Bytes(manager.ModulePath()).c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(handle, module);
    dlclose(handle);
}

TEST(ModuleOfAddress, IsNullForAnAddressOutsideEveryModule) {
    const int local = 0;
    EXPECT_EQ(ModuleOfAddress(&local), nullptr);
    EXPECT_EQ(ModuleOfAddress(nullptr), nullptr);
}

TEST(ResourceManager, KnowsTheLibraryAndTheFolderBesideIt) {
    void* const module = ModuleOfAddress(AddressOf(&kelcore::GetClientBuildNumber));
    const OS_ResourceManager manager(module);
    EXPECT_EQ(manager.Module(), module);
    const std::filesystem::path path = Bytes(manager.ModulePath());
    EXPECT_TRUE(path.is_absolute());
    EXPECT_EQ(path.filename(), "libkelplatform.so");
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(Bytes(manager.ResourceFolder()), path.parent_path() / "libkelplatform.resources");
}

TEST(ResourceManager, KnowsTheProgramItself) {
    const OS_ResourceManager manager(ModuleOfAddress(AddressOf(&OfThisProgram)));
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(Bytes(manager.ModulePath()), program);
    EXPECT_EQ(Bytes(manager.ResourceFolder()), program.native() + ".resources");
}

TEST(ResourceManager, APointInAFolderIsNoExtensionOfTheLibrary) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    const std::string path = program.parent_path().parent_path() / "lib/some.folder/plain_module";
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const OS_ResourceManager manager(ModuleOfAddress(dlsym(library, "Something")));
    EXPECT_EQ(Bytes(manager.ModulePath()), path);
    EXPECT_EQ(Bytes(manager.ResourceFolder()), path + ".resources");
    dlclose(library);
}

TEST(ResourceManager, WithoutModuleThereIsNoPath) {
    const OS_ResourceManager manager(nullptr);
    EXPECT_EQ(manager.Module(), nullptr);
    EXPECT_TRUE(manager.ModulePath().empty());
    EXPECT_TRUE(manager.ResourceFolder().empty());
}

TEST(PlugInResourceManager, IsTheOneInstalledLast) {
    EXPECT_EQ(PlugInResourceManager(), nullptr);
    auto first = std::make_unique<OS_ResourceManager>(nullptr);
    const OS_ResourceManager* const firstAddress = first.get();
    InstallPlugInResourceManager(std::move(first));
    EXPECT_EQ(PlugInResourceManager(), firstAddress);
    auto second = std::make_unique<OS_ResourceManager>(nullptr);
    const OS_ResourceManager* const secondAddress = second.get();
    InstallPlugInResourceManager(std::move(second));
    EXPECT_EQ(PlugInResourceManager(), secondAddress);
    InstallPlugInResourceManager(nullptr);
    EXPECT_EQ(PlugInResourceManager(), nullptr);
}

}  // namespace
}  // namespace kelui
