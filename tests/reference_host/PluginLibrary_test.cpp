#include "reference_host/PluginLibrary.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "tests/support/TemporaryFolder.h"

namespace refhost {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string ErrorOf(const std::filesystem::path& path) {
    try {
        const PluginLibrary library(path);
    } catch (const PluginError& error) {
        return error.what();
    }
    return {};
}

TEST(PluginLibraryTest, AMissingFileIsNamed) {
    const ::test::TemporaryFolder folder;
    const std::filesystem::path path = folder / "none.so";
    EXPECT_THAT(ErrorOf(path),
                AllOf(HasSubstr("no plug-in at " + path.string()), HasSubstr("ORVO_PLUGIN")));
}

TEST(PluginLibraryTest, TheAdviceIsApartFromThePathWhateverThePathHolds) {
    const ::test::TemporaryFolder folder;
    const std::filesystem::path path = folder / "one; two.so";
    try {
        const PluginLibrary library(path);
        ADD_FAILURE() << "a missing file was loaded";
    } catch (const PluginError& error) {
        EXPECT_EQ(error.Problem(), "no plug-in at " + path.string());
        EXPECT_THAT(error.Advice(), StartsWith("build it, or "));
        EXPECT_EQ(error.what(), error.Problem() + "; " + error.Advice());
    }
}

TEST(PluginLibraryTest, AFileThatIsNotALibraryIsNamed) {
    const ::test::TemporaryFolder folder;
    const std::filesystem::path path = folder.Write("text.so", "just a text");
    EXPECT_THAT(ErrorOf(path), HasSubstr("cannot load " + path.string() + " as a library"));
}

TEST(PluginLibraryTest, ALibraryWithoutTheFunctionIsNamed) {
    const std::filesystem::path path =
        DefaultPluginPath().replace_filename("lacks_the_function.so");
    EXPECT_THAT(ErrorOf(path),
                AllOf(HasSubstr(path.string()), HasSubstr("lacks the function SessionInterface")));
}

TEST(PluginLibraryTest, PassesAnyCallOn) {
    const PluginLibrary library(DefaultPluginPath());
    EXPECT_EQ(library.Call(6, nullptr), -2);
    EXPECT_EQ(library.Call(0, nullptr), -6);
    EXPECT_EQ(library.Call(1, nullptr), 0);
}

TEST(PluginLibraryTest, TheVariableNamesThePlugin) {
    ASSERT_EQ(setenv("ORVO_PLUGIN", "/elsewhere/Other.so", 1), 0);
    EXPECT_EQ(DefaultPluginPath(), "/elsewhere/Other.so");
    ASSERT_EQ(unsetenv("ORVO_PLUGIN"), 0);
}

TEST(PluginLibraryTest, WithoutTheVariableItIsBesideTheProgram) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    ASSERT_EQ(setenv("ORVO_PLUGIN", "", 1), 0);
    EXPECT_EQ(DefaultPluginPath(), program.parent_path().parent_path() / "lib" / "OrvoNative.so");
    ASSERT_EQ(unsetenv("ORVO_PLUGIN"), 0);
}

}  // namespace
}  // namespace refhost
