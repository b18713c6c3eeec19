#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/interchange/dawproject/Archive.h"

namespace {

using testing::HasSubstr;

/// A file that no honest program writes, and the words of its refusal.
struct Hostile {
    const char* name = "";
    test::Entries entries{};
    const char* words = "";
};

std::ostream& operator<<(std::ostream& out, const Hostile& hostile) {
    return out << hostile.name;
}

std::string Repeated(std::string_view text, std::size_t count) {
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

std::string Project(std::string_view content) {
    return "<Project version=\"1.0\"><Structure><Track id=\"t\" contentType=\"audio\"><Channel "
           "id=\"c\" role=\"regular\"/></Track></Structure><Arrangement><Lanes "
           "timeUnit=\"seconds\"><Clips\ntrack=\"t\">" +
           std::string(content) + "</Clips></Lanes></Arrangement></Project>";
}

test::Entries Only(std::string project) {
    return {{"project.xml", std::move(project)}};
}

const std::string kMedia =
    R"(<Audio id="a" sampleRate="48000" channels="1" duration="4"><File path="/a.wav"/></Audio>)";

std::vector<Hostile> Hostiles() {
    const std::string nested = "<Clip time=\"0\" duration=\"1\"><Clips>";
    const std::string unnested = "</Clips></Clip>";
    const auto clip = [](std::string_view attributes) {
        return Only(Project("\n<Clip " + std::string(attributes) + ">" + kMedia + "</Clip>"));
    };
    return {
        {"NoProject", {{"metadata.xml", "<MetaData/>"}}, "has no entry \"project.xml\""},
        {"NoEntry", {}, ""},
        {"TwoProjects",
         {{"project.xml", Project("")}, {"project.xml", Project("")}},
         "is no ZIP archive, or is damaged"},
        {"ANameThatClimbs", {{"project.xml", Project("")}, {"../a", "x"}}, "leads out"},
        {"AnAbsoluteName", {{"project.xml", Project("")}, {"/etc/a", "x"}}, "leads out"},
        {"ANameWithADrive", {{"project.xml", Project("")}, {"c:a", "x"}}, "leads out"},
        {"ANameWithABackslash", {{"project.xml", Project("")}, {"a\\..\\b", "x"}}, "leads out"},
        {"NoXml", Only("PK"), "project.xml:1"},
        {"AnotherRoot", Only("<a/>"), "<a>, not <Project>"},
        {"CutOff", Only("<Project>\n<Structure>\n<Track"), "project.xml:3"},
        {"ADocumentType",
         Only("<!DOCTYPE Project [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]>\n" + Project("")),
         "document type"},
        {"NestedTracks",
         Only("<Project><Structure>" + Repeated("<Track>", 5000) + Repeated("</Track>", 5000) +
              "</Structure></Project>"),
         "nested too deeply"},
        {"NestedClips", Only(Project(Repeated(nested, 5000) + Repeated(unnested, 5000))),
         "nested too deeply"},
        {"NestedLanes",
         Only("<Project><Arrangement>" + Repeated("<Lanes>", 50'000) +
              Repeated("</Lanes>", 50'000) + "</Arrangement></Project>"),
         "nested too deeply"},
        {"AClipInItself",
         Only(Project("<Clip time=\"0\" duration=\"1\"><Clips id=\"x\"><Clip time=\"0\" "
                      "duration=\"1\" reference=\"x\"/></Clips></Clip>")),
         "refers to itself"},
        {"ATimeThatIsNoNumber", clip("time=\"NaN\" duration=\"1\""), "project.xml:3: time=\"NaN\""},
        {"ATimeWithoutEnd", clip("time=\"inf\" duration=\"1\""), "is no number"},
        {"ATimeBeyondAll", clip("time=\"1e300\" duration=\"1e300\""), "beyond all sessions"},
        {"ADurationOfWords", clip("time=\"0\" duration=\"long\""), "is no number"},
        {"AFadeThatIsNoNumber", clip("time=\"0\" duration=\"1\" fadeInTime=\"nan\""),
         "is no number"},
        {"ALoopTooShort", clip("time=\"0\" duration=\"1e6\" loopStart=\"0\" loopEnd=\"0.0000001\""),
         "repeats"},
        {"ExponentialReferences", Only(Project([] {
             std::string clips;
             for (int i = 0; i < 40; ++i) {
                 const std::string inner = "<Clip time=\"0\" duration=\"1\" reference=\"x" +
                                           std::to_string(i + 1) + "\"/>";
                 clips += "<Clip time=\"0\" duration=\"1\"><Clips id=\"x" + std::to_string(i) +
                          "\">" + inner + inner + "</Clips></Clip>";
             }
             return clips;
         }())),
         "repeats too often"},
    };
}

class HostileDawProject : public testing::TestWithParam<Hostile> {};

TEST_P(HostileDawProject, IsRefusedWithAMessageAndNothingIsWritten) {
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "a.dawproject";
    test::WriteArchive(file, GetParam().entries);
    const orvo::ImportResult result = orvo::ImportSession(file, orvo::InterchangeKind::DawProject,
                                                          {.mediaFolder = folder / "media"});
    EXPECT_FALSE(result);
    ASSERT_EQ(result.messages.size(), 1u);
    EXPECT_EQ(result.messages[0].file, file.string());
    EXPECT_THAT(result.messages[0].what, HasSubstr(GetParam().words));
    EXPECT_EQ(result.session, orvo::Session());
    EXPECT_FALSE(std::filesystem::exists(folder / "media"));
}

INSTANTIATE_TEST_SUITE_P(Files, HostileDawProject, testing::ValuesIn(Hostiles()),
                         [](const auto& hostile) { return std::string(hostile.param.name); });

/// A file of oddities, and what the report says of them.
struct Odd {
    const char* name = "";
    std::string project{};
    const char* words = "";
};

std::ostream& operator<<(std::ostream& out, const Odd& odd) {
    return out << odd.name;
}

std::vector<Odd> Oddities() {
    const auto channel = [](std::string_view content) {
        return "<Project><Structure><Track id=\"t\" contentType=\"audio\"><Channel id=\"c\" "
               "destination=\"d\">" +
               std::string(content) +
               "</Channel></Track><Track id=\"u\"><Channel id=\"d\" destination=\"c\"/></Track>"
               "</Structure></Project>";
    };
    return {
        {"OutputsInACircle", channel(""), "in a circle"},
        {"ASendToNobody", channel("<Sends><Send destination=\"x\"><Volume/></Send></Sends>"),
         "the send leads to no track"},
        {"ALevelOfWords", channel("<Volume value=\"loud\" unit=\"linear\"/>"), "is no number"},
        {"AClipWithoutATime", Project("<Clip>" + kMedia + "</Clip>"), "has no time"},
        {"AClipWithoutContent", Project("<Clip time=\"0\"/>"), "has no content"},
        {"AClipWithANegativeLength",
         Project("<Clip time=\"0\" duration=\"-1\">" + kMedia + "</Clip>"), "has no length"},
        {"AReferenceToNothing", Project("<Clip time=\"0\" duration=\"1\" reference=\"no\"/>"),
         "has no content"},
        {"AClipOnNoTrack",
         "<Project><Arrangement><Lanes timeUnit=\"seconds\"><Clips track=\"x\"><Clip time=\"0\" "
         "duration=\"1\">" +
             kMedia + "</Clip></Clips></Lanes></Arrangement></Project>",
         "is on no track"},
        {"MediaWithoutAFile",
         Project("<Clip time=\"0\" duration=\"1\"><Audio duration=\"1\"/></Clip>"),
         "plays no file"},
        {"ATempoOfZero",
         "<Project><Transport><Tempo unit=\"bpm\" value=\"0\"/></Transport></Project>", "no tempo"},
        {"OneWarp",
         Project("<Clip time=\"0\" duration=\"1\"><Warps contentTimeUnit=\"seconds\">" + kMedia +
                 "<Warp time=\"0\" contentTime=\"0\"/></Warps></Clip>"),
         "fewer than two warps"},
        {"WarpsThatRunBackwards",
         Project("<Clip time=\"0\" duration=\"1\"><Warps contentTimeUnit=\"seconds\">" + kMedia +
                 "<Warp time=\"5\" contentTime=\"0\"/><Warp time=\"1\" contentTime=\"4\"/></Warps>"
                 "</Clip>"),
         "fewer than two warps"},
        {"Scenes", "<Project><Scenes><Scene/><Scene/></Scenes></Project>", "no scenes"},
        {"AVca", "<Project><Structure><Track><Channel role=\"vca\"/></Track></Structure></Project>",
         "no VCA"},
    };
}

class OddDawProject : public testing::TestWithParam<Odd> {};

TEST_P(OddDawProject, IsReadAndReported) {
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "a.dawproject";
    test::WriteArchive(file, Only(GetParam().project));
    const orvo::ImportResult result = orvo::ImportSession(file, orvo::InterchangeKind::DawProject);
    EXPECT_TRUE(result) << testing::PrintToString(result.messages);
    EXPECT_TRUE(std::ranges::any_of(result.report.facts, [](const orvo::InterchangeFact& fact) {
        return fact.what.find(GetParam().words) != std::string::npos &&
               fact.place.starts_with("project.xml:");
    }));
}

INSTANTIATE_TEST_SUITE_P(Files, OddDawProject, testing::ValuesIn(Oddities()),
                         [](const auto& odd) { return std::string(odd.param.name); });

TEST(DawProjectFile, OtherFilesAreRefused) {
    const test::TemporaryFolder folder;
    folder.Write("text.dawproject", "no archive");
    for (const char* name : {"text.dawproject", "missing.dawproject", "."}) {
        const orvo::ImportResult result =
            orvo::ImportSession(folder / name, orvo::InterchangeKind::DawProject);
        EXPECT_FALSE(result) << name;
        ASSERT_EQ(result.messages.size(), 1u) << name;
        EXPECT_FALSE(result.messages[0].what.empty()) << name;
    }
}

TEST(DawProjectFile, ABombIsRefusedBeforeItIsUnpacked) {
    const test::TemporaryFolder folder;
    for (const char* entry : {"project.xml", "plugins/a.bin", "audio/a.wav"}) {
        const std::filesystem::path file = folder / "a.dawproject";
        test::WriteBomb(file, entry, std::size_t{32} << 20);
        EXPECT_LT(std::filesystem::file_size(file), 40'000u);
        const orvo::ImportResult result =
            orvo::ImportSession(file, orvo::InterchangeKind::DawProject);
        EXPECT_FALSE(result) << entry;
        ASSERT_EQ(result.messages.size(), 1u);
        EXPECT_THAT(result.messages[0].what, HasSubstr("no honest file"));
    }
}

TEST(DawProjectFile, ACutArchiveIsRefused) {
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "a.dawproject";
    test::WriteArchive(file, Only(Project("")));
    const std::string whole = test::ReadFile(file);
    for (const std::size_t size : {whole.size() - 1, whole.size() / 2, std::size_t{30}}) {
        folder.Write("a.dawproject", whole.substr(0, size));
        EXPECT_FALSE(orvo::ImportSession(file, orvo::InterchangeKind::DawProject)) << size;
    }
}

}  // namespace
