#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "reference_host/FileReference.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/PluginLibrary.h"
#include "reference_host/SessionNode.h"
#include "tests/plugin/entry/Registrar.h"
#include "tests/support/TemporaryFolder.h"

namespace tses {

inline constexpr std::int32_t kInitialize = 0;
inline constexpr std::int32_t kReserved = 1;
inline constexpr std::int32_t kTerminate = 2;
inline constexpr std::int32_t kSetFilePath = 3;
inline constexpr std::int32_t kRead = 4;
inline constexpr std::int32_t kWrite = 5;

inline constexpr std::int32_t kUnknownSelector = -2;
inline constexpr std::int32_t kReadFailed = -4;
inline constexpr std::int32_t kNullArgument = -6;
inline constexpr std::int32_t kWriteFailed = -10;

/// Calls the exported function as a host does: in the built library, after loading it.
class EntryTest : public testing::Test {
protected:
    ~EntryTest() override {
        Call(kTerminate, nullptr);
        EXPECT_EQ(refhost::LiveNodes(), 1u) << "only the registrar is alive";
    }

    std::int32_t Call(std::int32_t selector, void* argument) {
        return library.Call(selector, argument);
    }
    std::int32_t Initialize() {
        return Call(kInitialize, static_cast<IPlugInRegistrar*>(registrar.Get()));
    }
    void FailToInitialize() {
        registrar->throws = true;
        EXPECT_EQ(Initialize(), kReadFailed);
        registrar->throws = false;
    }

    std::int32_t SetPath(const std::u16string& path) {
        const auto reference =
            refhost::Ref<refhost::FileReference>::Adopt(new refhost::FileReference(path));
        return Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get()));
    }
    std::int32_t SetPath(const std::filesystem::path& path) {
        return SetPath(kelcore::PathFromBytes(path.string()));
    }
    std::int32_t Read() {
        const auto session = refhost::SessionNode::Make();
        return Call(kRead, &session->Edit());
    }
    std::int32_t Write(orvo::Session content = {}) {
        const auto session = refhost::SessionNode::Make(std::move(content));
        return Call(kWrite, &session->Query());
    }

    /// What is traced while `call` runs, with its category.
    static std::vector<std::string> TracedBy(const std::function<void()>& call) {
        std::vector<std::string> lines;
        kelcore::trace::SetOutput([&](std::string_view category, std::string_view text) {
            lines.push_back(std::string(category) + ": " + std::string(text));
        });
        call();
        kelcore::trace::SetOutput({});
        return lines;
    }

    refhost::PluginLibrary library{refhost::DefaultPluginPath()};
    refhost::Ref<test::Registrar> registrar =
        refhost::Ref<test::Registrar>::Adopt(new test::Registrar);
    test::TemporaryFolder folder;
};

}  // namespace tses
