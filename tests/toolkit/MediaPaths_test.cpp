#include "toolkit/MediaPaths.h"

#include <gtest/gtest.h>

#include "platform/kelcore/Strings.h"

namespace {

using orvo::Session;
using toolkit::ResolveMediaPaths;

constexpr std::u16string_view kJson = u"/music/song/a.json";

/// The path that a path in `kJson` becomes; if it is refused, what is wrong with it and the advice.
std::string Resolved(const std::string& path) {
    Session session{.files = {{.id = 1, .path = path}}};
    const auto problem = ResolveMediaPaths(session, kJson);
    EXPECT_FALSE(problem) << problem->what;
    return session.files[0].path;
}

std::string Refusal(const std::string& path) {
    Session session{.files = {{.id = 7, .path = "a.wav"}, {.id = 8, .path = path}}};
    const auto problem = ResolveMediaPaths(session, kJson);
    return problem ? problem->what + ": " + problem->advice : "none";
}

TEST(MediaPaths, ARelativeOneIsResolvedFromTheFolderOfTheJson) {
    EXPECT_EQ(Resolved("Media/drum.wav"), "/music/song/Media/drum.wav");
    EXPECT_EQ(Resolved("../drum.wav"), "/music/drum.wav");
    EXPECT_EQ(Resolved("Media\\drum.wav"), "/music/song/Media/drum.wav");
    EXPECT_EQ(Resolved("Take: 1.wav"), "/music/song/Take: 1.wav");
    EXPECT_EQ(Resolved("Take:/1.wav"), "/music/song/Take:/1.wav");
    EXPECT_EQ(Resolved("file"), "/music/song/file");
}

TEST(MediaPaths, AFullOneStaysAsItIs) {
    for (const char* const path :
         {"", "/a/../b.wav", "D:\\Jobs\\b.wav", "d:/jobs/b.wav", "\\\\server\\share\\b.wav"}) {
        EXPECT_EQ(Resolved(path), path);
        EXPECT_TRUE(toolkit::IsFullMediaPath(kelcore::UTF8to16(path)));
    }
    for (const char* const path : {"b.wav", "D:b.wav", "file:///b.wav", "1:/b.wav"}) {
        EXPECT_FALSE(toolkit::IsFullMediaPath(kelcore::UTF8to16(path)));
    }
}

TEST(MediaPaths, AUrlOfAFileBecomesItsPath) {
    EXPECT_EQ(Resolved("file:///media/a%20b%C3%A4%25.wav"), "/media/a b\u00E4%.wav");
    EXPECT_EQ(Resolved("file://localhost/media/a.wav"), "/media/a.wav");
    EXPECT_EQ(Resolved("FILE://LocalHost/A.wav"), "/A.wav");
    EXPECT_EQ(Resolved("file:/media/\u00E4.wav"), "/media/\u00E4.wav");
    EXPECT_EQ(Resolved("file:///media/%3f%23.wav"), "/media/?#.wav");
    EXPECT_EQ(Resolved("file:///D:/Jobs/a%20b.wav"), "D:/Jobs/a b.wav");
}

TEST(MediaPaths, AByteOfAUrlThatIsNotUtf8StaysThatByte) {
    EXPECT_EQ(Resolved("file:///a%FF.wav"), "/a\xED\xB3\xBF.wav");
}

TEST(MediaPaths, AUrlThatNamesNoFileOfThisMachineIsRefusedInItsPlace) {
    EXPECT_EQ(Refusal("file://nas/a.wav"),
              "/files/1/path: this URL names the host \"nas\": name a file of this machine");
    EXPECT_EQ(Refusal("https://example.org/a.wav"),
              "/files/1/path: this is a URL with the scheme \"https\": name a file by its path, or "
              "by a URL that begins with file://");
    for (const char* const path :
         {"file://", "file://localhost", "file:x.wav", "file:", "file:///", "file:///a/"}) {
        EXPECT_EQ(Refusal(path),
                  "/files/1/path: this URL names no file: give it a full path, as in "
                  "file:///media/a.wav");
    }
}

TEST(MediaPaths, AUrlThatIsMalformedIsRefused) {
    for (const char* const path :
         {"file:///100%.wav", "file:///a%0", "file:///a%", "file:///a%4g", "file:///a%g4"}) {
        EXPECT_EQ(Refusal(path),
                  "/files/1/path: a % in this URL is not followed by the number of a byte: write % "
                  "as %25 in a name");
    }
    EXPECT_EQ(Refusal("file:///a%00.wav"),
              "/files/1/path: %00 in this URL stands for a zero, which no path has: leave it out");
    for (const char* const path : {"file:///a.wav?x", "file:///a#1.wav"}) {
        EXPECT_EQ(Refusal(path),
                  "/files/1/path: this URL of a file has a query or a fragment: write ? as %3F and "
                  "# as %23 in a name");
    }
}

}  // namespace
