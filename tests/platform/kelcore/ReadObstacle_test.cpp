#include "platform/kelcore/ReadObstacle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "platform/kelcore/Paths.h"
#include "tests/support/TemporaryFolder.h"

namespace kelcore {
namespace {

using testing::AnyOf;

class ReadObstacleTest : public testing::Test {
protected:
    /// "what: advice", or empty without an obstacle.
    static std::string Obstacle(std::u16string_view path) {
        const auto obstacle = FindReadObstacle(path);
        return obstacle ? obstacle->what + ": " + obstacle->advice : "";
    }
    std::string Obstacle(std::string_view name) const {
        return Obstacle(PathFromBytes((folder_ / name).string()));
    }

    test::TemporaryFolder folder_;
};

TEST_F(ReadObstacleTest, ARegularFileHasNone) {
    folder_.Write("empty", "");
    folder_.Write("a.orvo", "<orvo/>");
    EXPECT_EQ(Obstacle("empty"), "");
    EXPECT_EQ(Obstacle("a.orvo"), "");
}

TEST_F(ReadObstacleTest, AMissingFileIsReported) {
    folder_.Write("file", "");
    ASSERT_EQ(::symlink("gone", (folder_ / "dangling").c_str()), 0);
    for (const char* const name : {"none", "none/below", "file/below", "dangling"}) {
        EXPECT_EQ(Obstacle(name), "no such file: check the path") << name;
    }
}

TEST_F(ReadObstacleTest, EmptyPathsAndPathsWithAZeroAreReported) {
    folder_.Write("file", "");
    EXPECT_EQ(Obstacle(u""), "the path is empty: name a session file");
    const std::u16string file = PathFromBytes((folder_ / "file").string());
    EXPECT_EQ(Obstacle(file + u'\0' + u"x"),
              "no file has a path with a zero in it: check the path");
}

TEST_F(ReadObstacleTest, AnythingButARegularFileIsReportedByItsKind) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (folder_ / "socket").c_str(), sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(Obstacle(""), "this is a folder: name a session file in it");
    EXPECT_EQ(Obstacle("pipe"), "this is a pipe: put its content into a file first");
    EXPECT_EQ(Obstacle("socket"), "this is a socket: put its content into a file first");
    EXPECT_EQ(Obstacle(u"/dev/zero"), "this is a device: put its content into a file first");
    ::close(socket);
}

TEST_F(ReadObstacleTest, AFileThatOpensButCannotBeReadIsReportedWithTheSystemsReason) {
    // The first byte is at an unmapped address. Users who may not trace cannot open the file.
    EXPECT_THAT(Obstacle(u"/proc/self/mem"),
                AnyOf("cannot be read: Input/output error",
                      "you may not read this file: check its permissions and its folder's"));
}

TEST_F(ReadObstacleTest, SystemErrorsAreReportedAsPermissionsOrInTheSystemsWords) {
    EXPECT_EQ(ObstacleOfError(EACCES).what, "you may not read this file");
    EXPECT_EQ(ObstacleOfError(EPERM).what, "you may not read this file");
    EXPECT_EQ(ObstacleOfError(ELOOP).what, "cannot be read");
    EXPECT_EQ(ObstacleOfError(ELOOP).advice, "Too many levels of symbolic links");
}

}  // namespace
}  // namespace kelcore
