#include "toolkit/MediaPaths.h"

#include <gtest/gtest.h>

namespace {

using refhost::model::Session;
using toolkit::ResolveMediaPaths;

constexpr std::u16string_view kJson = u"/music/song/a.json";

/// What becomes of a path in `kJson`; what is wrong with it, with the advice, if it is refused.
std::u16string Resolved(const std::u16string& path) {
    Session session{.files = {{.id = 1, .path = path}}};
    const auto problem = ResolveMediaPaths(session, kJson);
    EXPECT_FALSE(problem) << problem->what;
    return session.files[0].path;
}

std::string Refusal(const std::u16string& path) {
    Session session{.files = {{.id = 7, .path = u"a.wav"}, {.id = 8, .path = path}}};
    const auto problem = ResolveMediaPaths(session, kJson);
    return problem ? problem->what + ": " + problem->advice : "none";
}

TEST(MediaPaths, ARelativeOneCountsFromTheFolderOfTheJson) {
    EXPECT_EQ(Resolved(u"Media/drum.wav"), u"/music/song/Media/drum.wav");
    EXPECT_EQ(Resolved(u"../drum.wav"), u"/music/drum.wav");
    EXPECT_EQ(Resolved(u"Media\\drum.wav"), u"/music/song/Media/drum.wav");
    EXPECT_EQ(Resolved(u"Take: 1.wav"), u"/music/song/Take: 1.wav");
    EXPECT_EQ(Resolved(u"Take:/1.wav"), u"/music/song/Take:/1.wav");
    EXPECT_EQ(Resolved(u"file"), u"/music/song/file");
}

TEST(MediaPaths, AFullOneStaysAsItIs) {
    for (const char16_t* const path :
         {u"", u"/a/../b.wav", u"D:\\Jobs\\b.wav", u"d:/jobs/b.wav", u"\\\\server\\share\\b.wav"}) {
        EXPECT_EQ(Resolved(path), path);
        EXPECT_TRUE(toolkit::IsFullMediaPath(path));
    }
    for (const char16_t* const path : {u"b.wav", u"D:b.wav", u"file:///b.wav", u"1:/b.wav"}) {
        EXPECT_FALSE(toolkit::IsFullMediaPath(path));
    }
}

TEST(MediaPaths, AUrlOfAFileIsThePathThatItStandsFor) {
    EXPECT_EQ(Resolved(u"file:///media/a%20b%C3%A4%25.wav"), u"/media/a b\u00E4%.wav");
    EXPECT_EQ(Resolved(u"file://localhost/media/a.wav"), u"/media/a.wav");
    EXPECT_EQ(Resolved(u"FILE://LocalHost/A.wav"), u"/A.wav");
    EXPECT_EQ(Resolved(u"file:/media/\u00E4.wav"), u"/media/\u00E4.wav");
    EXPECT_EQ(Resolved(u"file:///media/%3f%23.wav"), u"/media/?#.wav");
    EXPECT_EQ(Resolved(u"file:///D:/Jobs/a%20b.wav"), u"D:/Jobs/a b.wav");
}

TEST(MediaPaths, AByteOfAUrlThatIsNoUtf8StaysThatByte) {
    EXPECT_EQ(Resolved(u"file:///a%FF.wav"), u"/a\xDCFF.wav");
}

TEST(MediaPaths, AUrlThatNamesNoFileOfThisMachineIsRefusedInItsPlace) {
    EXPECT_EQ(Refusal(u"file://nas/a.wav"),
              "/files/1/path: this URL names the host \"nas\": name a file of this machine");
    EXPECT_EQ(Refusal(u"https://example.org/a.wav"),
              "/files/1/path: this is a URL with the scheme \"https\": name a file by its path, or "
              "by a URL that begins with file://");
    for (const char16_t* const path :
         {u"file://", u"file://localhost", u"file:x.wav", u"file:", u"file:///", u"file:///a/"}) {
        EXPECT_EQ(Refusal(path),
                  "/files/1/path: this URL names no file: give it a full path, as in "
                  "file:///media/a.wav");
    }
}

TEST(MediaPaths, AUrlThatIsMalformedIsRefused) {
    for (const char16_t* const path :
         {u"file:///100%.wav", u"file:///a%0", u"file:///a%", u"file:///a%4g", u"file:///a%g4"}) {
        EXPECT_EQ(Refusal(path),
                  "/files/1/path: a % in this URL is not followed by the number of a byte: write % "
                  "as %25 in a name");
    }
    EXPECT_EQ(Refusal(u"file:///a%00.wav"),
              "/files/1/path: %00 in this URL stands for a zero, which no path has: leave it out");
    for (const char16_t* const path : {u"file:///a.wav?x", u"file:///a#1.wav"}) {
        EXPECT_EQ(Refusal(path),
                  "/files/1/path: this URL of a file has a query or a fragment: write ? as %3F and "
                  "# as %23 in a name");
    }
}

}  // namespace
