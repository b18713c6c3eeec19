#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/Bases.h"
#include "platform/kelcore/Trace.h"
#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::GlobalTrackInfo;
using orvo::Metronome;
using orvo::Session;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class MetronomeElement : public test::ElementFixture {
protected:
    Metronome ReadMetronome(const std::string& attributes) {
        return ReadInSession("<metronome " + attributes + "/>").session.metronome;
    }

    static Session With(Metronome metronome) {
        Session session;
        session.metronome = std::move(metronome);
        return session;
    }
};

// Reading

TEST_F(MetronomeElement, SwitchSoundAndPatternReachTheHostInThisOrder) {
    EXPECT_THAT(
        CallsIn("<metronome pattern='downBeat subdivision none upBeat' enabled='true' "
                "soundSet='tabla'/>"),
        ElementsAre("IEditSession#1.GetMetronomeInfo() -> IEditMetronomeInfo#2",
                    "IEditMetronomeInfo#2.SetEnabled(true)", "IEditMetronomeInfo#2.SetSoundSet(9)",
                    "IEditMetronomeInfo#2.SetPattern([1,3,0,2])"));
}

TEST_F(MetronomeElement, WithoutAttributesItIsOffWithSticksAndTheHostsPattern) {
    EXPECT_THAT(CallsIn("<metronome/>"),
                ElementsAre("IEditSession#1.GetMetronomeInfo() -> IEditMetronomeInfo#2",
                            "IEditMetronomeInfo#2.SetEnabled(false)",
                            "IEditMetronomeInfo#2.SetSoundSet(8)"));
}

TEST_F(MetronomeElement, IsOnOnlyForTheExactTextTrue) {
    for (const std::string text : {"True", "1", ""}) {
        EXPECT_FALSE(ReadMetronome("enabled='" + text + "'").enabled) << text;
    }
}

TEST_F(MetronomeElement, EachSoundHasItsCode) {
    const std::vector<std::string> keywords = {"african1", "african2", "beeps",  "cymbals",
                                               "kit",      "latin1",   "latin2", "latin3",
                                               "sticks",   "tabla"};
    for (kelcore::uint32 code = 0; code < keywords.size(); ++code) {
        EXPECT_EQ(ReadMetronome("soundSet='" + keywords[code] + "'").soundSet,
                  orvo::SoundSet{code});
        EXPECT_THAT(WrittenElement("metronome", With({.soundSet = orvo::SoundSet{code}})),
                    HasSubstr("soundSet=\"" + keywords[code] + "\""));
    }
}

TEST_F(MetronomeElement, AMisspeltSoundReadsAsSticks) {
    for (const std::string text : {"Kit", "kit ", "4", ""}) {
        EXPECT_EQ(ReadMetronome("soundSet='" + text + "'").soundSet, orvo::SoundSet::Sticks)
            << text;
    }
}

TEST_F(MetronomeElement, RepeatedAndTrailingBlanksOfAPatternAreSkipped) {
    EXPECT_THAT(ReadMetronome("pattern='downBeat  upBeat upBeat '").pattern,
                ElementsAre(orvo::Beat::DownBeat, orvo::Beat::UpBeat, orvo::Beat::UpBeat));
    EXPECT_THAT(ReadMetronome("pattern=' downBeat'").pattern, ElementsAre(orvo::Beat::DownBeat));
}

TEST_F(MetronomeElement, UnknownBeatsAreSkipped) {
    EXPECT_THAT(ReadMetronome("pattern='downBeat DownBeat 1 upBeat,none none'").pattern,
                ElementsAre(orvo::Beat::DownBeat, orvo::Beat::Silent));
}

TEST_F(MetronomeElement, OnlyABlankSeparatesBeats) {
    EXPECT_THAT(ReadMetronome("pattern='downBeat,upBeat&#x9;none subdivision'").pattern,
                ElementsAre(orvo::Beat::Subdivision));
}

TEST_F(MetronomeElement, APatternWithoutAKnownBeatLeavesTheHosts) {
    for (const std::string text : {"", " ", "x y", "downbeat"}) {
        EXPECT_THAT(CallsOf(CallsIn("<metronome pattern='" + text + "'/>"), "SetPattern"),
                    IsEmpty())
            << text;
    }
}

TEST_F(MetronomeElement, ASecondOneIsSetBeforeTheFirstIsReleased) {
    std::vector<std::string> calls = CallsWithReferences(
        "<orvo><session><metronome/><metronome pattern='upBeat'/></session></orvo>");
    std::erase_if(
        calls, [](const std::string& call) { return call.find("Metronome") == std::string::npos; });
    EXPECT_THAT(
        calls,
        ElementsAre("IEditSession.GetMetronomeInfo", "IEditMetronomeInfoPrivate.AddReference",
                    "IEditMetronomeInfo.SetEnabled", "IEditMetronomeInfo.SetSoundSet",
                    "IEditSession.GetMetronomeInfo", "IEditMetronomeInfoPrivate.AddReference",
                    "IEditMetronomeInfo.SetEnabled", "IEditMetronomeInfo.SetSoundSet",
                    "IEditMetronomeInfo.SetPattern", "IEditMetronomeInfoPrivate.Release",
                    "IEditMetronomeInfoPrivate.Release"));
}

TEST_F(MetronomeElement, AHostWithoutAMetronomeGetsNoOtherCall) {
    EXPECT_THAT(CallsIn("<metronome enabled='true'/>", Null("IEditSession.GetMetronomeInfo")),
                ElementsAre("IEditSession#1.GetMetronomeInfo() -> null"));
}

// Writing

TEST_F(MetronomeElement, IsWrittenWithABlankAfterEveryBeat) {
    EXPECT_EQ(WrittenElement("metronome", With({true,
                                                orvo::SoundSet::Kit,
                                                {orvo::Beat::DownBeat, orvo::Beat::UpBeat,
                                                 orvo::Beat::Subdivision, orvo::Beat::Silent},
                                                {},
                                                {}})),
              "<metronome enabled=\"true\" pattern=\"downBeat upBeat subdivision none \" "
              "soundSet=\"kit\"/>");
    EXPECT_THAT(WrittenElement("metronome", With({.pattern = {orvo::Beat::DownBeat}})),
                HasSubstr("pattern=\"downBeat \""));
}

TEST_F(MetronomeElement, AnEmptyPatternIsAnEmptyAttribute) {
    EXPECT_EQ(WrittenElement("metronome", Session{}),
              "<metronome enabled=\"false\" pattern=\"\" soundSet=\"sticks\"/>");
}

TEST_F(MetronomeElement, ASoundWithoutAKeywordIsNotWritten) {
    for (const kelcore::uint32 code : {10u, 4294967295u}) {
        EXPECT_EQ(WrittenElement("metronome", With({.soundSet = orvo::SoundSet{code}})),
                  "<metronome enabled=\"false\" pattern=\"\"/>");
    }
}

TEST_F(MetronomeElement, ABeatWithoutATokenIsLeftOut) {
    EXPECT_THAT(WrittenElement("metronome",
                               With({.pattern = {orvo::Beat{4}, orvo::Beat::DownBeat,
                                                 orvo::Beat{4294967295}, orvo::Beat::UpBeat}})),
                HasSubstr("pattern=\"downBeat upBeat \""));
}

TEST_F(MetronomeElement, ItsTrackIsWrittenBeforeTheMusicalTimeline) {
    Metronome metronome;
    metronome.track = AudioTrack{.id = 5, .kind = orvo::TrackKind::Metronome};
    metronome.globalTrackInfo.emplace();
    const std::string element = WrittenElement("metronome", With(metronome));
    EXPECT_THAT(element,
                AllOf(HasSubstr("\n  <metronomeTrack "), HasSubstr("\n  <globalTrackInfo ")));
    EXPECT_LT(element.find("<metronomeTrack"), element.find("<globalTrackInfo"));
}

TEST_F(MetronomeElement, ATrackThatShowsNothingButItsClipsIsNotWritten) {
    Metronome metronome;
    metronome.track = AudioTrack{.kind = orvo::TrackKind::Metronome, .clipsOnly = true};
    EXPECT_THAT(WrittenElement("metronome", With(metronome)), Not(HasSubstr("metronomeTrack")));
}

TEST_F(MetronomeElement, WithoutOneTheSessionIsClosedEarlyAndTheSaveFailsWithoutAFile) {
    const test::WriteOutcome outcome = Write(Session{}, Null("IQuerySession.GetMetronomeInfo"));
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.file, std::nullopt);
}

TEST_F(MetronomeElement, WithoutOneWhatFollowsIsStillAskedForAndThenTheSessionCannotEnd) {
    Session session;
    session.trackVisibilityPresets.emplace_back();
    const test::WriteOutcome outcome = Write(session, Null("IQuerySession.GetMetronomeInfo"));
    EXPECT_THAT(CallsOf(outcome.calls, "GetTrackVisibilityPreset("), Not(IsEmpty()));
    EXPECT_THAT(CallsOf(outcome.calls, "GetFileCount"), IsEmpty());
}

TEST_F(MetronomeElement, WithoutOneTheTraceSaysWhyNothingWasSaved) {
    std::vector<std::string> traced;
    kelcore::trace::SetOutput([&](std::string_view category, std::string_view text) {
        traced.push_back(std::string(category) + ": " + std::string(text));
    });
    EXPECT_FALSE(Write(Session{}, Null("IQuerySession.GetMetronomeInfo")).ok);
    kelcore::trace::SetOutput({});
    EXPECT_THAT(traced, ElementsAre("app::XMLWriter: the host gave no metronome"));
}

TEST_F(MetronomeElement, WithoutOneTheFileThatWasThereStays) {
    ASSERT_TRUE(Write(Session{}).ok);
    const auto before = Write(Session{}).file;
    const test::WriteOutcome outcome =
        Write(With({.enabled = true}), Null("IQuerySession.GetMetronomeInfo"));
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.file, before);
}

TEST_F(MetronomeElement, SurvivesAWriteAndARead) {
    for (const Metronome& metronome :
         {Metronome{}, Metronome{true,
                                 orvo::SoundSet::African1,
                                 {orvo::Beat::Silent, orvo::Beat::DownBeat, orvo::Beat::UpBeat,
                                  orvo::Beat::Subdivision, orvo::Beat::Silent},
                                 {},
                                 GlobalTrackInfo{}}}) {
        EXPECT_EQ(ThroughFile(With(metronome)).metronome, metronome);
    }
}

TEST_F(MetronomeElement, ASoundWithoutAKeywordComesBackAsSticks) {
    EXPECT_EQ(ThroughFile(With({.soundSet = orvo::SoundSet{10}})).metronome.soundSet,
              orvo::SoundSet::Sticks);
}

TEST_F(MetronomeElement, BeatsWithoutATokenAreLostByAWriteAndARead) {
    EXPECT_THAT(
        ThroughFile(With({.pattern = {orvo::Beat{4}, orvo::Beat::DownBeat}})).metronome.pattern,
        ElementsAre(orvo::Beat::DownBeat));
}

/// A metronome whose host has no musical timeline.
class PlainMetronome final : public Counted<IQueryMetronomeInfo> {
public:
    bool IsEnabled() override { return true; }
    kelcore::uint32 GetSoundSet() override { return 0; }
    kelcore::uint32 GetPatternLength() override { return 0; }
    kelcore::uint32 GetPatternBeat(kelcore::uint32) override { return 0; }
    IQueryAudioTrack* GetMetronomeTrack() override { return nullptr; }
};

class SessionOfMetronome final : public QuerySessionBase {
public:
    explicit SessionOfMetronome(IQueryMetronomeInfo& metronome) : metronome_(metronome) {}
    IQueryMetronomeInfo* GetMetronomeInfo() override { return &metronome_; }

private:
    IQueryMetronomeInfo& metronome_;
};

TEST_F(MetronomeElement, WithoutAPrivateInterfaceIsWrittenWithoutATimeline) {
    PlainMetronome metronome;
    SessionOfMetronome session(metronome);
    EXPECT_TRUE(serializer->Write(Path(), Retain<IQuerySession>(&session)));
    const std::string file = test::ReadFile(folder.Path() / "session.orvo");
    EXPECT_EQ(test::ElementOf(file, "metronome"),
              "<metronome enabled=\"true\" pattern=\"\" soundSet=\"african1\"/>");
    EXPECT_EQ(metronome.ReferenceCount(), 1U);
    EXPECT_EQ(session.ReferenceCount(), 1U);
}

}  // namespace
}  // namespace tses
