#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/kelcore/Paths.h"
#include "tests/support/SerializerFixture.h"

namespace tses {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Changes the working folder for as long as it lives.
class WorkingFolder {
public:
    explicit WorkingFolder(const std::filesystem::path& folder) {
        std::filesystem::current_path(folder);
    }
    ~WorkingFolder() { std::filesystem::current_path(before_); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

class Files : public test::SerializerFixture {
protected:
    /// The calls that "file" with these attributes causes.
    std::vector<std::string> ReadFileElement(std::string_view attributes) {
        return ReadInRoot("<files><file " + std::string(attributes) + "/></files>").calls;
    }

    std::string Absolute(std::string_view name) const { return (folder / name).string(); }

    static orvo::Session WithFile(orvo::File file) {
        orvo::Session session;
        session.files.push_back(std::move(file));
        return session;
    }

    std::string Here(std::string_view name) const { return Absolute(name); }
};

TEST_F(Files, EveryAttributeReachesTheHostInOrderAndThePathAlways) {
    EXPECT_THAT(
        ReadFileElement("id='3' absolutePath='/m/a.wav' mediaHandlerID='h' recoveryID='r' "
                        "importerPrivateSettings='i'"),
        ElementsAre("IEditSession#1.GetFile(3) -> IEditFile#2", "IEditFile#2.SetPath(\"/m/a.wav\")",
                    "IEditFile#2.SetMediaHandler(\"h\")", "IEditFile#2.SetRecoveryId(\"r\")",
                    "IEditFile#2.SetImporterPrivateSettings(\"i\")"));
}

TEST_F(Files, EmptyTextsExceptThePathCauseNoCall) {
    EXPECT_THAT(
        ReadFileElement("id='3' mediaHandlerID='' recoveryID='' importerPrivateSettings=''"),
        ElementsAre("IEditSession#1.GetFile(3) -> IEditFile#2", "IEditFile#2.SetPath(\"\")"));
}

TEST_F(Files, AFileWithoutAnIdAsksForTheIdThatNamesNothing) {
    EXPECT_THAT(ReadFileElement("absolutePath='/m/a.wav'"),
                ElementsAre("IEditSession#1.GetFile(4294967295) -> null"));
}

TEST_F(Files, AnIdThatTheHostDoesNotAcceptIsIgnored) {
    test::HostSetup host;
    host.faults.ReturnNull("IEditSession.GetFile");
    const auto outcome = ReadInRoot("<files><file id='3' absolutePath='/m/a.wav'/></files>", host);
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(outcome.calls, ElementsAre("IEditSession#1.GetFile(3) -> null"));
}

TEST_F(Files, ASessionThatMovedWithItsMediaFindsThemByTheRelativePath) {
    folder.Write("a.wav", "sound");
    EXPECT_THAT(ReadFileElement("id='3' absolutePath='/gone/a.wav' relativePath='a.wav'"),
                testing::Contains("IEditFile#2.SetPath(\"" + Absolute("a.wav") + "\")"));
}

TEST_F(Files, TheAbsolutePathWinsIfBothLeadToAFile) {
    folder.Write("a.wav", "sound");
    folder.Write("b.wav", "sound");
    EXPECT_THAT(
        ReadFileElement("id='3' absolutePath='" + Absolute("a.wav") + "' relativePath='b.wav'"),
        testing::Contains("IEditFile#2.SetPath(\"" + Absolute("a.wav") + "\")"));
}

TEST_F(Files, TheAbsolutePathIsPassedOnIfNeitherLeadsToAFile) {
    EXPECT_THAT(ReadFileElement("id='3' absolutePath='/gone/a.wav' relativePath='b.wav'"),
                testing::Contains("IEditFile#2.SetPath(\"/gone/a.wav\")"));
}

TEST_F(Files, AnEmptyRelativePathNeverReplacesTheAbsoluteOne) {
    const auto read =
        ReadInRoot("<files><file id='3' absolutePath='/gone/a.wav' relativePath=''/></files>");
    ASSERT_EQ(read.session.files.size(), 1u);
    EXPECT_EQ(read.session.files[0].path, "/gone/a.wav");
    EXPECT_THAT(*Write(read.session).file, HasSubstr("absolutePath=\"/gone/a.wav\""));
}

TEST_F(Files, AnEmptyRelativePathAloneLeadsNowhere) {
    EXPECT_THAT(ReadFileElement("id='3' relativePath=''"),
                testing::Contains("IEditFile#2.SetPath(\"\")"));
}

TEST_F(Files, ARelativePathToAFolderNeverReplacesTheAbsoluteOne) {
    std::filesystem::create_directory(folder / "media");
    for (const std::string relative : {".", "..", "media", "media/", "./media", "/"}) {
        EXPECT_THAT(
            ReadFileElement("id='3' absolutePath='/gone/a.wav' relativePath='" + relative + "'"),
            testing::Contains("IEditFile#2.SetPath(\"/gone/a.wav\")"))
            << relative;
    }
}

TEST_F(Files, ARelativePathToAFolderIsThePathOfTheMediaIfThereIsNoAbsoluteOne) {
    std::filesystem::create_directory(folder / "media");
    for (const std::string absolute : {"", " absolutePath=''"}) {
        EXPECT_THAT(ReadFileElement("id='3' relativePath='.'" + absolute),
                    testing::Contains("IEditFile#2.SetPath(\"" + folder.Path().string() + "\")"));
        EXPECT_THAT(ReadFileElement("id='3' relativePath='media'" + absolute),
                    testing::Contains("IEditFile#2.SetPath(\"" + Absolute("media") + "\")"));
    }
}

TEST_F(Files, AFolderAtTheAbsolutePathIsNotAMediaFile) {
    std::filesystem::create_directory(folder / "media");
    folder.Write("a.wav", "sound");
    EXPECT_THAT(
        ReadFileElement("id='3' absolutePath='" + Absolute("media") + "' relativePath='a.wav'"),
        testing::Contains("IEditFile#2.SetPath(\"" + Absolute("a.wav") + "\")"));
}

TEST_F(Files, OnePathThatIsStoredTwiceIsPassedOnWhetherOrNotItExists) {
    for (const std::string name : {"gone.wav", "media/gone.wav", ".hidden.wav"}) {
        EXPECT_THAT(ReadFileElement("id='3' absolutePath='" + Absolute(name) + "' relativePath='" +
                                    name + "'"),
                    testing::Contains("IEditFile#2.SetPath(\"" + Absolute(name) + "\")"));
    }
}

TEST_F(Files, TheRelativePathAloneIsResolvedAgainstTheSessionWhetherOrNotItExists) {
    EXPECT_THAT(ReadFileElement("id='3' relativePath='media/../b.wav'"),
                testing::Contains("IEditFile#2.SetPath(\"" + Absolute("b.wav") + "\")"));
}

TEST_F(Files, AnEmptyAbsolutePathCountsAsMissing) {
    EXPECT_THAT(ReadFileElement("id='3' absolutePath='' relativePath='b.wav'"),
                testing::Contains("IEditFile#2.SetPath(\"" + Absolute("b.wav") + "\")"));
}

TEST_F(Files, AReadableHandlerNameIsTranslatedAndAnUnknownOneIgnored) {
    EXPECT_THAT(
        CallsOf(ReadFileElement("id='3' mediaHandler='Waveform Audio (WAV)'"), "SetMediaHandler"),
        ElementsAre("IEditFile#2.SetMediaHandler(\"kel.importer.wave\")"));
    EXPECT_THAT(
        CallsOf(ReadFileElement("id='3' mediaHandler='No such handler'"), "SetMediaHandler"),
        IsEmpty());
}

TEST_F(Files, TheHandlersIdentifierOverridesItsReadableName) {
    EXPECT_THAT(
        CallsOf(ReadFileElement("id='3' mediaHandler='Waveform Audio (WAV)' mediaHandlerID='x'"),
                "SetMediaHandler"),
        ElementsAre("IEditFile#2.SetMediaHandler(\"x\")"));
}

TEST_F(Files, NothingOfOneFileReachesTheNext) {
    const auto outcome =
        ReadInRoot("<files><file id='1' absolutePath='/a' recoveryID='r'/><file id='2'/></files>");
    ASSERT_EQ(outcome.session.files.size(), 2u);
    EXPECT_EQ(outcome.session.files[1].path, "");
    EXPECT_EQ(outcome.session.files[1].recoveryId, "");
}

// Writing

TEST_F(Files, AnEmptyTableIsWritten) {
    EXPECT_THAT(*Write({}).file, HasSubstr("<files/>"));
}

TEST_F(Files, BothPathsAreWrittenAndTheRelativeOneFromTheSession) {
    const auto outcome = Write(WithFile({3, Here("media/a.wav"), "kel.importer.wave", "r", "i"}));
    EXPECT_THAT(
        *outcome.file,
        HasSubstr("<file absolutePath=\"" + Absolute("media/a.wav") +
                  "\" id=\"3\" importerPrivateSettings=\"i\" mediaHandler=\"Waveform Audio (WAV)\" "
                  "recoveryID=\"r\" relativePath=\"media/a.wav\"/>"));
}

TEST_F(Files, TheRelativePathIsWrittenEvenIfTheSessionsOwnIsRelative) {
    std::filesystem::create_directory(folder / "songs");
    const WorkingFolder here(folder.Path());
    const auto session = WithFile({3, Here("media/a.wav"), "h", "", ""});
    EXPECT_THAT(*WriteTo(u"session.orvo", session).file, HasSubstr("relativePath=\"media/a.wav\""));
    EXPECT_THAT(*WriteTo(u"./songs/session.orvo", session).file,
                HasSubstr("relativePath=\"../media/a.wav\""));
    EXPECT_THAT(*WriteTo(u"songs/../session.orvo", session).file,
                HasSubstr("relativePath=\"media/a.wav\""));
}

TEST_F(Files, AnIdBeyondTheSignedRangeIsWrittenUnsigned) {
    EXPECT_THAT(*Write(WithFile({4294967294, "", "h", "", ""})).file,
                HasSubstr("<file id=\"4294967294\""));
}

TEST_F(Files, AnEmptyPathIsLeftOutWithTheOtherEmptyTexts) {
    EXPECT_THAT(*Write(WithFile({3, "", "kel.importer.wave", "", ""})).file,
                HasSubstr("<file id=\"3\" mediaHandler=\"Waveform Audio (WAV)\"/>"));
}

TEST_F(Files, AFileWithAnEmptyPathKeepsItsHandlerRecoveryAndSettings) {
    EXPECT_THAT(*Write(WithFile({3, "", "own", "r", "i"})).file,
                HasSubstr("<file id=\"3\" importerPrivateSettings=\"i\" mediaHandlerID=\"own\" "
                          "recoveryID=\"r\"/>"));
}

TEST_F(Files, AHandlerWithoutAReadableNameIsWrittenAsItsIdentifier) {
    const std::string file = *Write(WithFile({3, "", "own.handler", "", ""})).file;
    EXPECT_THAT(file, HasSubstr("<file id=\"3\" mediaHandlerID=\"own.handler\"/>"));
    EXPECT_THAT(file, Not(HasSubstr("mediaHandler=")));
}

TEST_F(Files, AMissingHandlerIsWrittenAsAnEmptyIdentifier) {
    EXPECT_THAT(*Write(WithFile({3, "", "", "", ""})).file,
                HasSubstr("<file id=\"3\" mediaHandlerID=\"\"/>"));
}

TEST_F(Files, APathWithoutARelativeFormIsWrittenAlone) {
    EXPECT_THAT(*Write(WithFile({3, "media/a.wav", "h", "", ""})).file,
                HasSubstr("<file absolutePath=\"media/a.wav\" id=\"3\" mediaHandlerID=\"h\"/>"));
}

TEST_F(Files, ANullEntryIsSkipped) {
    test::HostSetup host;
    host.faults.ReturnNull("IQuerySession.GetFile");
    const auto outcome = Write(WithFile({3, "/a", "", "", ""}), host);
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(*outcome.file, HasSubstr("<files/>"));
}

TEST_F(Files, ATableSurvivesAWriteAndAReadBack) {
    auto session = WithFile({3, Here("a.wav"), "kel.importer.wave", "r", "i"});
    session.files.push_back({4294967294, "/other/\u00FC \u266B.wav", "own", "", ""});
    ASSERT_TRUE(Write(session).ok);
    EXPECT_EQ(ReadPath(Path()).session.files, session.files);
}

}  // namespace
}  // namespace tses
