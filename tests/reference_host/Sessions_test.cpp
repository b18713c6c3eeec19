#include "reference_host/Sessions.h"

#include <gmock/gmock.h>

#include "host/LogTarget.h"
#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Trace.h"
#include "reference_host/HostString.h"
#include "tests/reference_host/support/NoLiveNodes.h"
#include "tests/support/TemporaryFolder.h"

namespace refhost {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SessionsTest : public ::testing::Test {
protected:
    SessionsTest() { plugin_.ReleaseContext(); }

    void TearDown() override { EXPECT_EQ(LiveNodes(), before_); }

    std::u16string InFolder(std::string_view name) const { return (folder_ / name).u16string(); }

    ::test::TemporaryFolder folder_;
    Plugin plugin_;
    const std::size_t before_ = LiveNodes();
};

orvo::Session SomeSession() {
    orvo::Session session;
    session.sampleRate = 44100;
    session.audioChannelType = orvo::ChannelType::FivePointOne;
    session.duration = 9007199254740993;
    session.bitDepth = 24;
    session.files = {
        {.id = 7, .path = "/music/voice \u00e9.wav", .recoveryId = "r"},
        {.id = 3, .path = "/music/b.wav", .mediaHandler = "x", .importerPrivateSettings = "{}"},
    };
    session.audioDevice = {"in", "out", {{-1, "Mic"}}, {{1, "Left"}, {2, "Right"}}};
    return session;
}

TEST_F(SessionsTest, AWrittenSessionReadsBackTheSame) {
    const orvo::Session session = SomeSession();
    EXPECT_EQ(WriteSession(plugin_, InFolder("a.orvo"), session).result, tses::SessionResult::Ok);
    ReadResult read = ReadSession(plugin_, InFolder("a.orvo"));
    EXPECT_EQ(read.result, tses::SessionResult::Ok);
    EXPECT_THAT(read.messages, IsEmpty());
    EXPECT_FALSE(read.session.formatDescription.empty());
    read.session.formatDescription.clear();
    EXPECT_EQ(read.session, session);
}

TEST_F(SessionsTest, AWriteChangesNothingInTheSession) {
    const orvo::Session session = SomeSession();
    WriteSession(plugin_, InFolder("a.orvo"), session);
    WriteSession(plugin_, InFolder("none/a.orvo"), session);
    EXPECT_EQ(session, SomeSession());
}

TEST_F(SessionsTest, AWriteLeavesNothingAlive) {
    WriteSession(plugin_, InFolder("a.orvo"), SomeSession());
    EXPECT_EQ(LiveNodes(), before_);
}

TEST_F(SessionsTest, AFailedReadSaysWhatTheParserSays) {
    const std::filesystem::path path =
        folder_.Write("bad.orvo", "<orvo>\n<session></files></orvo>");
    const ReadResult read = ReadSession(plugin_, path.u16string());
    EXPECT_EQ(read.result, tses::SessionResult::ReadFailed);
    ASSERT_THAT(read.messages, SizeIs(1));
    EXPECT_NE(read.messages[0].find(u"(line: 2, col: "), std::u16string::npos);
    EXPECT_NE(read.messages[0].back(), u'\n');
}

TEST_F(SessionsTest, AMessageOfOnlyLineEndsIsEmpty) {
    const std::filesystem::path path = folder_.Write("a.orvo", "<orvo/>");
    const ReadResult read =
        ReadSession(plugin_, path.u16string(), {.wrap = [](tses::IEditSession& session) {
                        const auto text = Ref<HostString>::Adopt(new HostString(u"\n\n"));
                        session.GetLogTarget()->LogMessage(text.Get());
                        return Ref<tses::IEditSession>::Retain(&session);
                    }});
    EXPECT_THAT(read.messages, ElementsAre(std::u16string()));
}

TEST_F(SessionsTest, WithoutALogTargetTheTraceSaysWhatIsMalformed) {
    const std::filesystem::path path =
        folder_.Write("bad.orvo", "<orvo>\n<session></files></orvo>");
    const ReadResult read = ReadSession(plugin_, path.u16string(), {.logTarget = false});
    EXPECT_EQ(read.result, tses::SessionResult::ReadFailed);
    EXPECT_THAT(read.messages, IsEmpty());
    EXPECT_THAT(read.traced, ElementsAre(HasSubstr("(line: 2, col: ")));
}

TEST_F(SessionsTest, AFailedWriteSaysWhyAndWhere) {
    const WriteResult written = WriteSession(plugin_, InFolder("none/a.orvo"), {});
    EXPECT_EQ(written.result, tses::SessionResult::WriteFailed);
    EXPECT_THAT(written.messages, ElementsAre(HasSubstr((folder_ / "none/a.orvo").string())));
}

TEST_F(SessionsTest, AMissingFileIsReportedWithAndWithoutALogTarget) {
    for (const bool logTarget : {true, false}) {
        ::testing::internal::CaptureStderr();
        const ReadResult read =
            ReadSession(plugin_, InFolder("none.orvo"), {.logTarget = logTarget});
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(read.result, tses::SessionResult::ReadFailed);
        EXPECT_THAT(read.messages, SizeIs(logTarget ? 1 : 0));
        EXPECT_THAT(read.traced, ElementsAre((folder_ / "none.orvo").string() +
                                             ": no such file: check the path"));
    }
}

TEST_F(SessionsTest, ReadsAndWritesLeaveTracingAsItWas) {
    for (const bool enabled : {true, false}) {
        for (const char* const category : {"app::XMLReader", "app::XMLWriter"}) {
            kelcore::trace::SetEnabled(category, enabled);
        }
        WriteSession(plugin_, InFolder("a.orvo"), {});
        ReadSession(plugin_, InFolder("a.orvo"));
        EXPECT_EQ(kelcore::trace::IsEnabled("app::XMLReader"), enabled);
        EXPECT_EQ(kelcore::trace::IsEnabled("app::XMLWriter"), enabled);
        EXPECT_THAT(ReadSession(plugin_, InFolder("none.orvo")).traced, SizeIs(1));
    }
    for (const char* const category : {"app::XMLReader", "app::XMLWriter"}) {
        kelcore::trace::SetEnabled(category, true);
    }
}

TEST_F(SessionsTest, ReadsAndWritesLeaveTheOutputOfTheTraceAsItWas) {
    std::vector<std::string> lines;
    kelcore::trace::SetOutput(
        [&](std::string_view, std::string_view text) { lines.emplace_back(text); });
    WriteSession(plugin_, InFolder("none/a.orvo"), {});
    ReadSession(plugin_, InFolder("none.orvo"));
    EXPECT_THAT(lines, IsEmpty());
    kelcore::trace::Write(kelcore::trace::kReaderCategory, "of the host");
    kelcore::trace::SetOutput({});
    EXPECT_THAT(lines, ElementsAre("of the host"));
}

TEST_F(SessionsTest, LinesThatOthersTraceDuringAWriteGoToStandardError) {
    kelcore::trace::SetEnabled("app::Other", true);
    ::testing::internal::CaptureStderr();
    const WriteResult written =
        WriteSession(plugin_, InFolder("a.orvo"), {}, {.progress = [](const Progress& progress) {
                         if (progress.done == 1) {
                             kelcore::trace::Write("app::Other", "of another");
                         }
                     }});
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "app::Other: of another\n");
    EXPECT_THAT(written.messages, IsEmpty());
    kelcore::trace::SetEnabled("app::Other", false);
}

TEST_F(SessionsTest, ThePluginSeesWhatWrapReturns) {
    WriteSession(plugin_, InFolder("a.orvo"), SomeSession());
    tses::IEditSession* wrapped = nullptr;
    const ReadResult read =
        ReadSession(plugin_, InFolder("a.orvo"), {.wrap = [&wrapped](tses::IEditSession& session) {
                        wrapped = &session;
                        return Ref<tses::IEditSession>::Retain(&session);
                    }});
    EXPECT_NE(wrapped, nullptr);
    EXPECT_EQ(read.session.sampleRate, 44100U);
}

TEST_F(SessionsTest, ProgressIsReported) {
    std::vector<Progress> written;
    WriteSession(plugin_, InFolder("a.orvo"), {},
                 {.progress = [&](const Progress& progress) { written.push_back(progress); }});
    EXPECT_THAT(written, ElementsAre(Progress{1, 7, 0, 0}, Progress{2, 7, 0, 1},
                                     Progress{3, 7, 0, 1}, Progress{4, 7, 0, 1}));
    std::vector<Progress> read;
    ReadSession(plugin_, InFolder("a.orvo"),
                {.progress = [&](const Progress& progress) { read.push_back(progress); }});
    ASSERT_THAT(read, Not(IsEmpty()));
    EXPECT_EQ(read.front(), (Progress{0, 7, 0, 0}));
}

TEST_F(SessionsTest, FeatureDefaultsSwitchInstrumentTracksOn) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    UseFeatureDefaults();
    EXPECT_TRUE(kelappsupport::IsFeatureEnabled("Tembra.InstrumentTracks"));
}

}  // namespace
}  // namespace refhost
