#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <exception>
#include <filesystem>
#include <utility>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/XercesPlatform.h"
#include "tests/support/SerializerFixture.h"

// A file that the parser cannot read: the trace and the log target tell the host why.

namespace tses {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class UnreadableFiles : public test::SerializerFixture {
protected:
    UnreadableFiles() {
        kelcore::trace::SetOutput([this](std::string_view category, std::string_view text) {
            EXPECT_EQ(category, "app::XMLReader");
            traced.emplace_back(text);
        });
    }
    ~UnreadableFiles() override { kelcore::trace::SetOutput({}); }

    /// Expects that a read of `path` reports only this reason, once in the trace and once in the
    /// log.
    void ExpectReason(const std::u16string& path, const std::string& reason) {
        traced.clear();
        const auto outcome = ReadPath(path);
        const std::string name = kelcore::PathToBytes(path);
        EXPECT_FALSE(outcome.ok) << name;
        EXPECT_THAT(traced, ElementsAre(name + ": " + reason));
        EXPECT_THAT(outcome.log, ElementsAre("XML FATAL ERROR: (line: 0, col: 0) [ " + name + "] " +
                                             reason + "\n"));
    }

    std::vector<std::string> traced;
};

TEST_F(UnreadableFiles, AMissingFileIsReportedOnceInTheTraceAndOnceInTheLog) {
    ExpectReason(Path(), "no such file: check the path");
    EXPECT_THAT(ReadPath(Path()).calls,
                ElementsAre(HasSubstr("GetLogTarget() -> "), HasSubstr("LogMessage(")));
}

TEST_F(UnreadableFiles, AnEmptyPathIsReportedWithoutAName) {
    const auto outcome = ReadPath(u"");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.log, ElementsAre("XML FATAL ERROR: (line: 0, col: 0) the path is empty: "
                                         "name a session file\n"));
    EXPECT_THAT(traced, ElementsAre("the path is empty: name a session file"));
}

TEST_F(UnreadableFiles, AFolderAPipeADeviceAndASocketAreReportedAsSuch) {
    const std::string pipe = (folder / "pipe.orvo").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ExpectReason(folder.Path().u16string(), "this is a folder: name a session file in it");
    ExpectReason(kelcore::PathFromBytes(pipe), "this is a pipe: put its content into a file first");
    ExpectReason(u"/dev/null", "this is a device: put its content into a file first");
    const std::string socket = (folder / "socket.orvo").string();
    ASSERT_EQ(::mknod(socket.c_str(), S_IFSOCK | 0600, 0), 0);
    ExpectReason(kelcore::PathFromBytes(socket),
                 "this is a socket: put its content into a file first");
}

TEST_F(UnreadableFiles, AFileThatThisUserMayNotReadIsReportedAsSuch) {
    const std::string file = folder.Write("locked.orvo", "<orvo/>").string();
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    using std::filesystem::perms;
    std::filesystem::permissions(folder.Path(), perms::group_exec | perms::others_exec,
                                 std::filesystem::perm_options::add);
    const uid_t user = ::geteuid();
    if (user == 0) {
        ASSERT_EQ(::seteuid(65534), 0);
    }
    ExpectReason(kelcore::PathFromBytes(file),
                 "you may not read this file: check its permissions and its folder's");
    ASSERT_EQ(::seteuid(user), 0);
}

TEST_F(UnreadableFiles, AZeroInThePathIsShownInTheReason) {
    EXPECT_FALSE(ReadPath(std::u16string(u"/a\0b", 4)).ok);
    EXPECT_THAT(traced,
                ElementsAre("/a\\0b: no file has a path with a zero in it: check the path"));
    EXPECT_THAT(ReadPath(std::u16string(u"/a\0b", 4)).log,
                ElementsAre(HasSubstr(" [ /a\\0b] no file has a path ")));
}

TEST_F(UnreadableFiles, AFileIsNotReadWithoutTheXmlLibrary) {
    const std::string file = folder.Write("a.orvo", "<orvo/>").string();
    StopXerces();
    ExpectReason(kelcore::PathFromBytes(file),
                 "the XML library did not start: initialise the plug-in again");
    StartXerces();
}

TEST_F(UnreadableFiles, AFileThatYieldsNoByteIsReportedInTheWordsOfTheSystem) {
    ExpectReason(u"/proc/self/mem", "cannot be read: Input/output error");
}

TEST_F(UnreadableFiles, WithoutALogTargetTheTraceSaysWhy) {
    test::HostSetup host;
    host.logTarget = false;
    EXPECT_FALSE(ReadPath(Path(), host).ok);
    EXPECT_THAT(traced, ElementsAre(HasSubstr(": no such file: ")));
}

TEST_F(UnreadableFiles, AnExceptionOfTheHostDuringTheReportGoesNoFurther) {
    for (const char* const operation : {"IEditSession.GetLogTarget", "IHostLogTarget.LogMessage"}) {
        traced.clear();
        test::HostSetup host;
        host.faults.Throw(operation, std::make_exception_ptr(42));
        EXPECT_FALSE(ReadPath(Path(), host).ok) << operation;
        EXPECT_THAT(traced, ElementsAre(HasSubstr(": no such file: "))) << operation;
    }
}

TEST_F(UnreadableFiles, AFileThatIsReadInPartHasOnlyItsOwnMessage) {
    const auto outcome = Read("<orvo><session></orvo>");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.log, ElementsAre(HasSubstr("XML FATAL ERROR: (line: 1, col: ")));
    EXPECT_THAT(traced, ElementsAre("Unexpected XMLReader Exception"));
}

TEST_F(UnreadableFiles, ADocumentThatIsNoSessionIsNotReportedAsUnreadable) {
    const auto outcome = Read("<score/>");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_THAT(traced, ElementsAre("Unexpected XMLReader Exception", "Not a session file."));
}

TEST_F(UnreadableFiles, ATrackThatTheHostRefusesIsTheReasonInTheTrace) {
    test::HostSetup host;
    host.faults.ReturnNull("IEditSession.GetAudioTrack");
    EXPECT_FALSE(
        Read("<orvo><session><tracks><audioTrack id='7'/></tracks></session></orvo>", host).ok);
    EXPECT_THAT(traced, ElementsAre("Unexpected XMLReader Exception", "Invalid Track Id"));
}

TEST_F(UnreadableFiles, WithoutALogTargetTheTraceSaysWhatIsMalformed) {
    test::HostSetup host;
    host.logTarget = false;
    EXPECT_FALSE(Read("<orvo><session></orvo>", host).ok);
    EXPECT_THAT(traced,
                ElementsAre(testing::MatchesRegex(
                    "XML FATAL ERROR: \\(line: 1, col: [0-9]+\\) .*session.orvo\\] .*[^\n]")));
}

TEST_F(UnreadableFiles, WithoutALogTargetTheTraceSaysWhatIsRefused) {
    test::HostSetup host;
    host.logTarget = false;
    EXPECT_FALSE(Read("<!DOCTYPE orvo><orvo/>", host).ok);
    EXPECT_THAT(traced,
                ElementsAre(HasSubstr("(line: 1, col: 1) "), "Unexpected XMLReader Exception"));
}

TEST_F(UnreadableFiles, AReadThatCannotBeginSaysWhyEvenAfterOneThatBegan) {
    EXPECT_TRUE(Read("<orvo/>").ok);
    ExpectReason(kelcore::PathFromBytes((folder / "none.orvo").string()),
                 "no such file: check the path");
}

}  // namespace
}  // namespace tses
