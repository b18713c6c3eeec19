#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Paths.h"
#include "tests/support/TemporaryFolder.h"
#include "toolkit/DocumentScan.h"

using toolkit::Conversion;
using toolkit::NotCarried;
using toolkit::Target;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class JointLossesTest : public testing::Test {
protected:
    std::u16string FullPath(const std::string& name) const {
        return kelcore::PathFromBytes((folder_ / name).string());
    }

    /// What a session file with this content in its root loses on conversion to another one.
    std::vector<std::string> Losses(const std::string& content, const std::string& to = "b.orvo") {
        return Losses(content, Conversion{.from = FullPath("a.orvo"), .to = FullPath(to)});
    }

    std::vector<std::string> LossesToJson(const std::string& content) {
        return Losses(content, Conversion{.target = Target::Json, .from = FullPath("a.orvo")});
    }

    std::vector<std::string> Losses(const std::string& content, const Conversion& conversion) {
        const auto path = folder_.Write("a.orvo", "<orvo>" + content + "</orvo>");
        const auto scan = toolkit::ScanDocument(path, conversion);
        EXPECT_FALSE(scan.problem);
        EXPECT_EQ(toolkit::ScanFileBesideRead(toolkit::LibraryUse(), path, conversion).notCarried,
                  scan.notCarried);
        std::vector<std::string> losses;
        for (const NotCarried& loss : scan.notCarried) {
            losses.push_back(std::to_string(loss.place.line) + ":" +
                             std::to_string(loss.place.column) + ": " + loss.what);
        }
        return losses;
    }

    static std::string File(const std::string& absolutePath, const std::string& relativePath) {
        return "<files><file id='3' absolutePath='" + absolutePath + "' relativePath='" +
               relativePath + "'/></files>";
    }

    std::string InFolder(const std::string& name) const { return (folder_ / name).string(); }

    test::TemporaryFolder folder_;
};

// Paths

constexpr const char* kDrumOfWindows = "D:\\Jobs\\Show\\Media\\drum.wav";

TEST_F(JointLossesTest, ARelativePathIsLostIfTheNewFileNamesAnotherPlace) {
    const std::string document = File(kDrumOfWindows, "Media/drum.wav");
    const std::string loss =
        "1:14: the value \"Media/drum.wav\" of the attribute relativePath of <file> with id 3: the "
        "new file names the place of its absolutePath alone";
    EXPECT_THAT(Losses(document), ElementsAre(loss));
    EXPECT_THAT(LossesToJson(document), ElementsAre(loss));
}

TEST_F(JointLossesTest, NothingIsLostIfTheMediaMovedWithTheSession) {
    std::filesystem::create_directory(folder_ / "Media");
    folder_.Write("Media/drum.wav", "RIFF");
    for (const std::string absolutePath : {kDrumOfWindows, "/gone/Media/drum.wav", "drum.wav"}) {
        EXPECT_THAT(Losses(File(absolutePath, "Media\\drum.wav")), IsEmpty());
        EXPECT_THAT(LossesToJson(File(absolutePath, "Media/drum.wav")), IsEmpty());
    }
}

TEST_F(JointLossesTest, ARelativePathIsLostIfBothPathsLeadToAFile) {
    folder_.Write("one.wav", "RIFF");
    folder_.Write("two.wav", "RIFF");
    EXPECT_THAT(Losses(File(InFolder("one.wav"), "two.wav")), SizeIs(1));
    EXPECT_THAT(LossesToJson(File(InFolder("one.wav"), "two.wav")), SizeIs(1));
}

TEST_F(JointLossesTest, ARelativePathToTheSamePlaceIsNotLostWhetherOrNotMediaAreThere) {
    for (const std::string relativePath :
         {"Media/drum.wav", "./Media//drum.wav", "Media\\drum.wav", "x/../Media/drum.wav"}) {
        const std::string document = File(InFolder("Media/drum.wav"), relativePath);
        EXPECT_THAT(Losses(document), IsEmpty()) << relativePath;
        EXPECT_THAT(Losses(document, "deeper/b.orvo"), IsEmpty()) << relativePath;
        EXPECT_THAT(LossesToJson(document), IsEmpty()) << relativePath;
    }
}

TEST_F(JointLossesTest, ARelativePathThatTheNewFileCannotStateIsLost) {
    std::filesystem::create_directories(folder_ / "back\\slash/deeper");
    const std::string path = InFolder("back\\slash/a.wav");
    const Conversion toTheFolder{.from = FullPath("back\\slash/a.orvo"),
                                 .to = FullPath("back\\slash/deeper/b.orvo")};
    EXPECT_THAT(Losses(File(path, "a.wav"), toTheFolder), IsEmpty());
    const Conversion elsewhere{.from = FullPath("back\\slash/a.orvo"), .to = FullPath("b.orvo")};
    EXPECT_THAT(Losses(File(path, "a.wav"), elsewhere), SizeIs(1));
}

TEST_F(JointLossesTest, AnEmptyRelativePathIsNotALoss) {
    for (const std::string absolutePath : {"/gone/drum.wav", kDrumOfWindows, ""}) {
        EXPECT_THAT(Losses(File(absolutePath, "")), IsEmpty()) << absolutePath;
        EXPECT_THAT(LossesToJson(File(absolutePath, "")), IsEmpty()) << absolutePath;
    }
}

TEST_F(JointLossesTest, ARelativePathWithoutAnAbsoluteOneIsKept) {
    const std::string document = "<files><file id='3' relativePath='Media/drum.wav'/></files>";
    EXPECT_THAT(Losses(document), IsEmpty());
    EXPECT_THAT(LossesToJson(document), IsEmpty());
}

TEST_F(JointLossesTest, AnAbsolutePathThatIsNotAFullOneIsLostOnlyInJson) {
    for (const std::string absolutePath : {"drum.wav", "file:///drum.wav"}) {
        const std::string document =
            "<files><file id='3' absolutePath='" + absolutePath + "'/></files>";
        EXPECT_THAT(Losses(document), IsEmpty());
        EXPECT_THAT(LossesToJson(document),
                    ElementsAre("1:14: the value \"" + absolutePath +
                                "\" of the attribute absolutePath of <file> with id 3: it is no "
                                "full path, and JSON counts such from its own folder"));
    }
}

TEST_F(JointLossesTest, PathsAreNotCheckedIfTheirConversionIsUnknown) {
    EXPECT_THAT(Losses(File(kDrumOfWindows, "Media/drum.wav"), Conversion{}), IsEmpty());
}

// Times

std::string TimeFormat(const std::string& attributes) {
    return "<session><sessionState><timeFormatState timeFormat='timeFormatTimeCode' " + attributes +
           "/></sessionState></session>";
}

TEST_F(JointLossesTest, AFrameRateThatNtscTimecodeDoesNotHaveIsLost) {
    for (const std::string ntsc : {"true", "1"}) {
        const std::string document =
            TimeFormat("timeCodeFrameRate='25' timeCodeNTSC='" + ntsc + "'");
        const std::string loss =
            "1:30: the value \"25\" of the attribute timeCodeFrameRate of <timeFormatState>, which "
            "NTSC timecode does not have";
        EXPECT_THAT(Losses(document), ElementsAre(loss));
        EXPECT_THAT(LossesToJson(document), ElementsAre(loss));
    }
}

TEST_F(JointLossesTest, EveryOtherFrameRateIsCarried) {
    for (const std::string rate : {"24", "30", "060"}) {
        EXPECT_THAT(Losses(TimeFormat("timeCodeNTSC='true' timeCodeFrameRate='" + rate + "'")),
                    IsEmpty());
    }
    EXPECT_THAT(Losses(TimeFormat("timeCodeNTSC='false' timeCodeFrameRate='25'")), IsEmpty());
    EXPECT_THAT(Losses(TimeFormat("timeCodeFrameRate='25'")), IsEmpty());
    EXPECT_THAT(Losses(TimeFormat("timeCodeNTSC='true'")), IsEmpty());
    EXPECT_THAT(Losses("<session><sessionState><timeFormatState timeFormat='timeFormatSamples' "
                       "timeCodeNTSC='true' timeCodeFrameRate='25'/></sessionState></session>"),
                IsEmpty());
}

TEST_F(JointLossesTest, AFrameRateThatIsNoNumberIsNamedOnce) {
    EXPECT_THAT(Losses(TimeFormat("timeCodeNTSC='true' timeCodeFrameRate='PAL'")), SizeIs(1));
}

// Video

TEST_F(JointLossesTest, ThePixelType0IsLost) {
    const auto document = [](const std::string& type) {
        return "<session><tracks><videoTrack id='1'><videoClip id='1'><videoFormat pixelType='" +
               type + "'/></videoClip></videoTrack></tracks></session>";
    };
    for (const std::string zero : {"0", "-0", "00"}) {
        const std::string loss =
            "1:61: the value \"" + zero + "\" of the attribute pixelType of <videoFormat>";
        EXPECT_THAT(Losses(document(zero)), ElementsAre(loss));
        EXPECT_THAT(LossesToJson(document(zero)), ElementsAre(loss));
    }
    EXPECT_THAT(Losses(document("1")), IsEmpty());
    EXPECT_THAT(Losses(document("-1")), IsEmpty());
    EXPECT_THAT(Losses(document("RGB")), SizeIs(1));
}

// The position that depends on the version

std::string SessionText(const std::string& version, const std::string& cti,
                        const std::string& selection) {
    return "<session " + version + "><sessionState ctiPosition='" + cti +
           "'><selectionState selectionStart='" + selection + "'/></sessionState></session>";
}

TEST_F(JointLossesTest, ThePositionThatTheFirstVersionGivesIsLostInASessionOfAnotherVersion) {
    for (const std::string version : {"appVersion='4.0'", ""}) {
        EXPECT_THAT(Losses(SessionText(version, "5", "6")),
                    ElementsAre("1:7: the version \"4.0\" of <session>: a reader ends with the "
                                "position 5 (ctiPosition), and with 6 (selectionStart) in a file "
                                "of version \"" +
                                kelcore::GetClientVersion() + "\""));
    }
    EXPECT_THAT(Losses("<session><sessionState ctiPosition='5'/></session>"), SizeIs(1));
    EXPECT_THAT(Losses("<session><sessionState><selectionState selectionStart='5'/>"
                       "</sessionState></session>"),
                SizeIs(1));
}

TEST_F(JointLossesTest, ThePositionIsKeptByOtherVersionsByJsonAndIfBothAreTheSame) {
    EXPECT_THAT(Losses(SessionText("appVersion='4.0.1'", "5", "6")), IsEmpty());
    EXPECT_THAT(Losses(SessionText("appVersion='4.0'", "5", "5")), IsEmpty());
    EXPECT_THAT(LossesToJson(SessionText("appVersion='4.0'", "5", "6")), IsEmpty());
}

TEST_F(JointLossesTest, AnApplicationOfTheFirstVersionKeepsItsPositionAndLosesTheOthers) {
    const std::string before = kelcore::GetClientVersion();
    const kelcore::uint32 build = kelcore::GetClientBuildNumber();
    kelcore::SetClientVersion("4.0", build);
    EXPECT_THAT(Losses(SessionText("appVersion='4.0'", "5", "6")), IsEmpty());
    EXPECT_THAT(
        Losses(SessionText("appVersion='25.1'", "5", "6")),
        ElementsAre(HasSubstr("the position 6 (selectionStart), and with 5 (ctiPosition) in "
                              "a file of version \"4.0\"")));
    kelcore::SetClientVersion(before, build);
}

// What JSON has but a session file does not

TEST_F(JointLossesTest, ANumberWithoutAWordAndAnEditParameterWithoutASlotAreLostOnlyInASession) {
    const std::string document =
        "<session><tracks><audioTrack id='1'><editParameter/><clip id='1'><clipStretch "
        "stretchMode='7' stretchType='3' stretchQuality='4294967295'/></clip></audioTrack></tracks>"
        "</session>";
    EXPECT_THAT(Losses(document),
                ElementsAre(HasSubstr("<editParameter> without slotIndex"),
                            HasSubstr("\"7\" of the attribute stretchMode"),
                            HasSubstr("\"3\" of the attribute stretchType"),
                            HasSubstr("\"4294967295\" of the attribute stretchQuality")));
    EXPECT_THAT(LossesToJson(document), IsEmpty());
}

}  // namespace
