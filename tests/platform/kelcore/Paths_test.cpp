#include "platform/kelcore/Paths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <filesystem>

#include "platform/kelcore/Strings.h"

namespace kelcore {
namespace {

TEST(PathBytes, TextIsUtf8) {
    EXPECT_EQ(PathToBytes(u"/Musik/Gr\u00FC\u00DFe \U0001F3B5.orvo"),
              "/Musik/Gr\xC3\xBC\xC3\x9F"
              "e \xF0\x9F\x8E\xB5.orvo");
    EXPECT_EQ(PathFromBytes("/Gr\xC3\xBC\xC3\x9F"
                            "e \xF0\x9F\x8E\xB5"),
              u"/Gr\u00FC\u00DFe \U0001F3B5");
}

TEST(PathBytes, AByteThatIsNotUtf8BecomesALoneSurrogate) {
    EXPECT_EQ(PathFromBytes("a\xFFz"), (std::u16string{u'a', 0xDCFF, u'z'}));
    EXPECT_EQ(PathToBytes(std::u16string{u'a', 0xDCFF, u'z'}), "a\xFFz");
    EXPECT_EQ(PathFromBytes("\xC3/"), (std::u16string{0xDCC3, u'/'}));
}

TEST(PathBytes, TheThreeBytesOfASurrogateStayThreeBytes) {
    const std::string bytes = "\xED\xB2\x80";  // U+DC80, the escape of the byte 0x80
    EXPECT_EQ(PathFromBytes(bytes), (std::u16string{0xDCED, 0xDCB2, 0xDC80}));
    EXPECT_EQ(PathToBytes(PathFromBytes(bytes)), bytes);
}

TEST(PathBytes, OtherLoneSurrogatesAreNotBytes) {
    EXPECT_EQ(PathToBytes(std::u16string{0xDC2F}), "\xED\xB0\xAF") << "never a separator";
    EXPECT_EQ(PathToBytes(std::u16string{0xD800}), "\xED\xA0\x80");
}

TEST(PathBytes, EveryPairOfBytesComesBack) {
    for (int first = 0; first <= 0xFF; ++first) {
        for (int second = 0; second <= 0xFF; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(PathToBytes(PathFromBytes(bytes)), bytes) << first << ' ' << second;
        }
    }
}

RC_GTEST_PROP(PathBytes, EveryByteStringComesBack, ()) {
    // Favours bytes that form complete and broken sequences.
    const auto byte =
        rc::gen::oneOf(rc::gen::arbitrary<char>(),
                       rc::gen::element('\x80', '\x90', '\x9F', '\xA0', '\xB2', '\xBF', '\xC3',
                                        '\xE0', '\xED', '\xEF', '\xF0', '\xF4', 'a', '/'));
    const auto bytes = *rc::gen::container<std::string>(byte);
    RC_ASSERT(PathToBytes(PathFromBytes(bytes)) == bytes);
}

constexpr std::u16string_view kSession = u"/music/song/song.orvo";

TEST(MakeFileFromPath, JoinsARelativePathToTheFolderOfTheLocation) {
    EXPECT_EQ(MakeFileFromPath(u"kick.wav", kSession), u"/music/song/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"media/kick.wav", kSession), u"/music/song/media/kick.wav");
}

TEST(MakeFileFromPath, AnAbsolutePathStays) {
    EXPECT_EQ(MakeFileFromPath(u"/other/kick.wav", kSession), u"/other/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"/other/a\\b.wav", kSession), u"/other/a\\b.wav");
}

TEST(MakeFileFromPath, ResolvesDotsAndDoubledSeparators) {
    EXPECT_EQ(MakeFileFromPath(u"./media//./kick.wav", kSession), u"/music/song/media/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"../common/x/../kick.wav", kSession), u"/music/common/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"/a/../b//./c.wav", kSession), u"/b/c.wav");
    EXPECT_EQ(MakeFileFromPath(u"...", kSession), u"/music/song/...");
}

TEST(MakeFileFromPath, TheRootHasNoParent) {
    EXPECT_EQ(MakeFileFromPath(u"../../../../kick.wav", kSession), u"/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"/../..", kSession), u"/");
}

TEST(MakeFileFromPath, BackslashesSeparateNamesOfARelativePath) {
    EXPECT_EQ(MakeFileFromPath(u"..\\media\\kick.wav", kSession), u"/music/media/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"\\kick.wav", kSession), u"/music/song/kick.wav");
}

TEST(MakeFileFromPath, ABackslashInTheLocationIsPartOfAName) {
    EXPECT_EQ(MakeFileFromPath(u"kick.wav", u"/a\\b/c\\d.orvo"), u"/a\\b/kick.wav");
}

TEST(MakeFileFromPath, AnEmptyPathNamesNoFile) {
    EXPECT_EQ(MakeFileFromPath(u"", kSession), u"");
    EXPECT_EQ(MakeFileFromPath(u"", u"/song.orvo"), u"");
    EXPECT_EQ(MakeFileFromPath(u"", u"song.orvo"), u"");
}

TEST(MakeFileFromPath, ADotIsTheFolder) {
    EXPECT_EQ(MakeFileFromPath(u".", kSession), u"/music/song");
}

TEST(MakeFileFromPath, ALocationInTheRootHasTheRootAsItsFolder) {
    EXPECT_EQ(MakeFileFromPath(u"kick.wav", u"/song.orvo"), u"/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u".", u"/song.orvo"), u"/");
}

TEST(MakeFileFromPath, ARelativeLocationGivesARelativePath) {
    EXPECT_EQ(MakeFileFromPath(u"kick.wav", u"song.orvo"), u"kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"kick.wav", u"song/song.orvo"), u"song/kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"../../kick.wav", u"song/song.orvo"), u"../kick.wav");
    EXPECT_EQ(MakeFileFromPath(u"../../../kick.wav", u"song/song.orvo"), u"../../kick.wav");
    EXPECT_EQ(MakeFileFromPath(u".", u"song.orvo"), u".");
}

TEST(MakeFileFromPath, NamesThatAreNotUtf8StayUnchanged) {
    const std::u16string name = PathFromBytes("kick\xFF.wav");
    EXPECT_EQ(PathToBytes(MakeFileFromPath(name, kSession)), "/music/song/kick\xFF.wav");
}

TEST(LeadsPlainlyTo, ComparesWithoutResolvingThePath) {
    EXPECT_TRUE(LeadsPlainlyTo(u"/music/song/kick.wav", u"kick.wav", kSession));
    EXPECT_TRUE(LeadsPlainlyTo(u"/music/song/media/kick.wav", u"media/kick.wav", kSession));
    EXPECT_TRUE(LeadsPlainlyTo(u"/music/kick.wav", u"../kick.wav", kSession));
    EXPECT_TRUE(LeadsPlainlyTo(u"/media/kick.wav", u"../../media/kick.wav", kSession));
    EXPECT_TRUE(LeadsPlainlyTo(u"/kick.wav", u"kick.wav", u"/song.orvo"));
}

TEST(LeadsPlainlyTo, IsFalseIfThePathLeadsElsewhere) {
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song/kick.wav", u"snare.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/kick.wav", u"kick.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/songkick.wav", u"kick.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song/kick.wav", u"", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"", u"kick.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song/kick.wav", u"/music/song/kick.wav", kSession));
}

TEST(LeadsPlainlyTo, IsFalseIfSomethingNeedsResolving) {
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song/kick.wav", u"./kick.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song/media/../kick.wav", u"media/../kick.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song//kick.wav", u"/kick.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song/media\\kick.wav", u"media\\kick.wav", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/song/", u"", kSession));
    EXPECT_FALSE(LeadsPlainlyTo(u"song/kick.wav", u"kick.wav", u"song/song.orvo"));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/a/../kick.wav", u"kick.wav", u"/music/a/../song.orvo"));
    EXPECT_FALSE(LeadsPlainlyTo(u"/music/kick.wav", u"../kick.wav", u"/music/a/../song.orvo"));
    EXPECT_FALSE(LeadsPlainlyTo(u"/kick.wav", u"../kick.wav", u"/song.orvo"));
}

RC_GTEST_PROP(LeadsPlainlyTo, NeverSaysYesWhereTheResolvedPathIsAnother, ()) {
    const auto anyPath = [] {
        std::u16string path;
        for (int count = *rc::gen::inRange(0, 6); count > 0; --count) {
            path += *rc::gen::element<std::u16string>(u"/", u"..", u".", u"a", u"b/", u"/b", u"\\");
        }
        return path;
    };
    const std::u16string location = u"/" + anyPath();
    const std::u16string relative = anyPath();
    const std::u16string resolved = MakeFileFromPath(relative, location);
    const std::u16string path = *rc::gen::arbitrary<bool>() ? resolved : u"/" + anyPath();
    if (LeadsPlainlyTo(path, relative, location)) {
        RC_ASSERT(resolved == path);
    }
}

TEST(MakeNormalizedRelativePath, GoesDownFromTheFolderOfTheLocation) {
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/song/kick.wav", kSession), u"kick.wav");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/song/media/kick.wav", kSession),
              u"media/kick.wav");
}

TEST(MakeNormalizedRelativePath, GoesUpIfNecessary) {
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/kick.wav", kSession), u"../kick.wav");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/kick.wav", kSession), u"../../kick.wav");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/songs/kick.wav", kSession), u"../songs/kick.wav");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music", kSession), u"..");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/", kSession), u"../..");
}

TEST(MakeNormalizedRelativePath, ALocationInTheRoot) {
    EXPECT_EQ(MakeNormalizedRelativePath(u"/a/kick.wav", u"/song.orvo"), u"a/kick.wav");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/", u"/song.orvo"), u".");
}

TEST(MakeNormalizedRelativePath, TheFolderItselfIsADot) {
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/song", kSession), u".");
}

TEST(MakeNormalizedRelativePath, ResolvesBothPathsFirst) {
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/x/../song//kick.wav", u"/music/./song/song.orvo"),
              u"kick.wav");
}

TEST(MakeNormalizedRelativePath, IsEmptyIfOnePathIsNotAbsolute) {
    EXPECT_EQ(MakeNormalizedRelativePath(u"kick.wav", kSession), u"");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/kick.wav", u"song.orvo"), u"");
    EXPECT_EQ(MakeNormalizedRelativePath(u"", kSession), u"");
    EXPECT_EQ(MakeNormalizedRelativePath(u"C:\\Music\\kick.wav", kSession), u"");
}

TEST(MakeNormalizedRelativePath, IsEmptyIfANameContainsABackslash) {
    EXPECT_EQ(MakeNormalizedRelativePath(u"/music/song/a\\b.wav", kSession), u"");
    EXPECT_EQ(MakeNormalizedRelativePath(u"/a\\b/kick.wav", u"/a\\b/song.orvo"), u"kick.wav")
        << "a folder that both share does not matter";
}

rc::Gen<std::u16string> AbsolutePath() {
    const auto name =
        rc::gen::element<std::u16string>(u"a", u"b", u"c", u"..", u".", u"", u"...", u" ",
                                         u"\u00E9", PathFromBytes("\xFF"), u"a.wav");
    return rc::gen::map(rc::gen::container<std::vector<std::u16string>>(name),
                        [](const std::vector<std::u16string>& names) {
                            std::u16string path;
                            for (const auto& part : names) {
                                path += u"/" + part;
                            }
                            return path.empty() ? std::u16string(u"/") : path;
                        });
}

RC_GTEST_PROP(RelativePaths, ResolveToWhatTheyWereMadeFrom, ()) {
    const auto path = *AbsolutePath();
    const auto location = *AbsolutePath();
    const auto relative = MakeNormalizedRelativePath(path, location);
    RC_ASSERT(!relative.empty());
    RC_ASSERT(relative.front() != u'/');
    RC_ASSERT(MakeFileFromPath(relative, location) == MakeFileFromPath(path, u""));
}

RC_GTEST_PROP(RelativePaths, FindTheFileWhenItMovesWithTheSession, ()) {
    const auto path = u"/old" + *AbsolutePath();
    const auto location = u"/old" + *AbsolutePath() + u"/song.orvo";
    RC_PRE(MakeFileFromPath(path, u"").starts_with(u"/old/"));
    RC_PRE(MakeFileFromPath(location, u"").starts_with(u"/old/"));
    const auto moved = [](std::u16string_view normal) {
        return u"/new/deeper" + std::u16string(normal.substr(std::u16string_view(u"/old").size()));
    };
    const auto relative = MakeNormalizedRelativePath(path, location);
    RC_ASSERT(MakeFileFromPath(relative, moved(MakeFileFromPath(location, u""))) ==
              moved(MakeFileFromPath(path, u"")));
}

TEST(PrepAsLongPathName, MakesAPathAbsoluteAndKeepsDotDot) {
    const std::u16string here = PathFromBytes(std::filesystem::current_path().native());
    EXPECT_EQ(FileUtils::PrepAsLongPathName(u"/a//b/./../c"), u"/a/b/../c");
    EXPECT_EQ(FileUtils::PrepAsLongPathName(u"x/../song.orvo"), here + u"/x/../song.orvo");
    EXPECT_EQ(FileUtils::PrepAsLongPathName(u"."), here);
    EXPECT_EQ(FileUtils::PrepAsLongPathName(u".."), here + u"/..");
    EXPECT_EQ(FileUtils::PrepAsLongPathName(u""), u"");
}

TEST(PrepAsLongPathName, KeepsLongPathsWhole) {
    const std::u16string path = u"/" + std::u16string(300, u'x');
    EXPECT_EQ(FileUtils::PrepAsLongPathName(path), path);
}

}  // namespace
}  // namespace kelcore
