#include "reference_host/Plugin.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "reference_host/SessionNode.h"
#include "tests/reference_host/support/NoLiveNodes.h"
#include "tests/support/TemporaryFolder.h"

namespace refhost {
namespace {

using ::testing::HasSubstr;

class PluginTest : public test::NoLiveNodes {
protected:
    std::u16string InFolder(std::string_view name) const { return (folder_ / name).u16string(); }

    static std::filesystem::path RefusingPlugin() {
        return DefaultPluginPath().replace_filename("idle_plugin.so");
    }

    ::test::TemporaryFolder folder_;
};

TEST_F(PluginTest, WritesAFileAndReadsItBack) {
    Plugin plugin;
    const auto written = SessionNode::Make({.sampleRate = 96000});
    EXPECT_EQ(plugin.Write(InFolder("a.orvo"), written->Query()), tses::SessionResult::Ok);
    const auto read = SessionNode::Make();
    EXPECT_EQ(plugin.Read(InFolder("a.orvo"), read->Edit()), tses::SessionResult::Ok);
    EXPECT_EQ(read->Value().sampleRate, 96000U);
}

TEST_F(PluginTest, HoldsTheContextOfAWriteUntilItsNextCall) {
    Plugin plugin;
    auto session = SessionNode::Make();
    const std::size_t others = LiveNodes() - 1;
    plugin.Write(InFolder("a.orvo"), session->Query());
    session.Reset();
    EXPECT_GT(LiveNodes(), others);
    plugin.ReleaseContext();
    EXPECT_EQ(LiveNodes(), others);
}

TEST_F(PluginTest, HoldsNothingOfAReadAfterwards) {
    Plugin plugin;
    const std::size_t before = LiveNodes();
    {
        const auto session = SessionNode::Make();
        const std::filesystem::path path = folder_.Write("bad.orvo", "<orvo><session>");
        EXPECT_EQ(plugin.Read(path.u16string(), session->Edit()), tses::SessionResult::ReadFailed);
    }
    EXPECT_EQ(LiveNodes(), before);
}

TEST_F(PluginTest, AnEmptyPathFailsBothWays) {
    Plugin plugin;
    const auto session = SessionNode::Make();
    EXPECT_EQ(plugin.Read(u"", session->Edit()), tses::SessionResult::ReadFailed);
    EXPECT_EQ(plugin.Write(u"", session->Query()), tses::SessionResult::WriteFailed);
}

TEST_F(PluginTest, APluginThatRefusesToInitialiseIsAnErrorWithItsResult) {
    ::setenv("ORVO_REFUSES", "Initialize", 1);
    try {
        const Plugin plugin(RefusingPlugin());
        ADD_FAILURE() << "the plug-in was accepted";
    } catch (const PluginError& error) {
        EXPECT_THAT(error.what(), HasSubstr("refuses to initialise (result -3)"));
    }
    ::unsetenv("ORVO_REFUSES");
}

TEST_F(PluginTest, ARefusedPathEndsTheReadOrWrite) {
    ::setenv("ORVO_REFUSES", "SetFilePath", 1);
    Plugin plugin(RefusingPlugin());
    const auto session = SessionNode::Make();
    EXPECT_EQ(plugin.Read(u"/a.orvo", session->Edit()), tses::SessionResult::NotImplemented);
    EXPECT_EQ(plugin.Write(u"/a.orvo", session->Query()), tses::SessionResult::NotImplemented);
    ::unsetenv("ORVO_REFUSES");
    EXPECT_EQ(plugin.Read(u"/a.orvo", session->Edit()), tses::SessionResult::Ok);
}

TEST_F(PluginTest, ARestartEndsTheSkippingThatAFailedReadLeft) {
    const std::u16string bad = folder_.Write("bad.orvo", "<orvo><a><b></orvo>").u16string();
    const std::u16string good =
        folder_.Write("good.orvo", "<orvo><session sampleRate='8000'/></orvo>").u16string();
    Plugin plugin;
    const auto rateAfterFailure = [&](bool restarts) {
        EXPECT_EQ(plugin.Read(bad, SessionNode::Make()->Edit()), tses::SessionResult::ReadFailed);
        if (restarts) {
            plugin.Restart();
        }
        const auto session = SessionNode::Make({.sampleRate = 1});
        EXPECT_EQ(plugin.Read(good, session->Edit()), tses::SessionResult::Ok);
        return session->Value().sampleRate;
    };
    EXPECT_EQ(rateAfterFailure(false), 1U);
    EXPECT_EQ(rateAfterFailure(true), 8000U);
}

TEST_F(PluginTest, ARestartThatThePluginRefusesIsAnError) {
    Plugin plugin(RefusingPlugin());
    ::setenv("ORVO_REFUSES", "Initialize", 1);
    EXPECT_THROW(plugin.Restart(), PluginError);
    ::unsetenv("ORVO_REFUSES");
}

TEST_F(PluginTest, OneLibraryServesOnePluginAfterAnother) {
    for (int i = 0; i < 3; ++i) {
        Plugin plugin;
        const auto session = SessionNode::Make();
        EXPECT_EQ(plugin.Write(InFolder("a.orvo"), session->Query()), tses::SessionResult::Ok);
    }
}

}  // namespace
}  // namespace refhost
