// Files as other programs write them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/interchange/otio/OtioText.h"

namespace {

namespace text = test::otio;
using orvo::AudioClip;
using orvo::Fidelity;
using orvo::ImportResult;
using orvo::InterchangeKind;
using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;

class OtioReading : public testing::Test {
protected:
    const Session& Read(const std::string& content) {
        folder_.Write("a.otio", content);
        result_ = orvo::ImportSession(folder_ / "a.otio", InterchangeKind::Otio);
        EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
        return result_.session;
    }

    /// The clips of the first track.
    std::vector<AudioClip> ClipsOf(const std::string& children, const std::string& rest = "") {
        const Session& session = Read(text::Timeline(text::Track(children, rest)));
        return session.audioTracks.empty() ? std::vector<AudioClip>()
                                           : session.audioTracks[0].clips;
    }

    bool Says(Fidelity fidelity, const std::string& what) const {
        return std::ranges::any_of(result_.report.facts, [&](const orvo::InterchangeFact& fact) {
            return fact.fidelity == fidelity && fact.what.find(what) != fact.what.npos;
        });
    }

    test::TemporaryFolder folder_;
    ImportResult result_;
};

using Placement = std::tuple<std::int64_t, std::int64_t, std::int64_t>;

/// Start, duration and place in the media.
Placement PlacementOf(const AudioClip& clip) {
    return {clip.startPoint, clip.duration, clip.sourceInPoint};
}

std::vector<Placement> PlacementsOf(const std::vector<AudioClip>& clips) {
    std::vector<Placement> placements;
    std::ranges::transform(clips, std::back_inserter(placements), PlacementOf);
    return placements;
}

TEST_F(OtioReading, ClipsFollowEachOtherAndGaps) {
    EXPECT_THAT(PlacementsOf(ClipsOf(text::Clip("a", 5, 100) + "," + text::Gap(50) + "," +
                                     text::Clip("b", 0, 10))),
                ElementsAre(Placement(0, 100, 5), Placement(150, 10, 0)));
    EXPECT_EQ(result_.session.sampleRate, 48000u);
    EXPECT_EQ(result_.session.duration, 160);
    EXPECT_EQ(result_.session.audioTracks[0].name, "T");
    EXPECT_EQ(result_.session.audioTracks[0].id, 1u);
}

TEST_F(OtioReading, OldSchemasAreTaken) {
    const std::string clip = text::Object(
        "Clip.1",
        R"(,"name":"a","source_range":)" + text::Range(7, 9) +
            R"(,"media_reference":{"OTIO_SCHEMA":"ExternalReference.1","target_url":"/m/a.wav"})");
    const std::string filler = text::Object("Filler.1", R"(,"source_range":)" + text::Range(0, 3));
    const std::string sequence =
        text::Object("Sequence.1", R"(,"kind":"Audio","children":[)" + filler + "," + clip + "]");
    const Session& session = Read(text::Timeline(sequence));
    ASSERT_EQ(session.audioTracks.size(), 1u);
    EXPECT_THAT(PlacementsOf(session.audioTracks[0].clips), ElementsAre(Placement(3, 9, 7)));
    EXPECT_EQ(session.files.at(0).path, "/m/a.wav");
}

TEST_F(OtioReading, RatesOfTelevisionAreFractions) {
    // 24 frames of 1001/24000 s each are 48048 samples at 48000 Hz.
    const std::vector<AudioClip> clips =
        ClipsOf(text::Gap(24, 23.976) + "," + text::Clip("a", 24, 48, 23.976));
    EXPECT_THAT(PlacementsOf(clips), ElementsAre(Placement(48048, 96096, 48048)));
}

TEST_F(OtioReading, MixedRatesAddUpWithoutDrift) {
    std::string children;
    for (int i = 0; i < 1000; ++i) {
        children += text::Gap(1, 24) + "," + text::Gap(1, 30) + "," + text::Gap(1, 44100) + ",";
    }
    // The rate of the first sound is the session's: 1000 * (1837.5 + 1470 + 1) samples.
    const std::vector<AudioClip> clips = ClipsOf(children + text::Clip("a", 0, 1, 44100));
    EXPECT_THAT(PlacementsOf(clips), ElementsAre(Placement(3308500, 1, 0)));
}

TEST_F(OtioReading, MediaBeginAtTheirTimecode) {
    EXPECT_THAT(PlacementsOf(ClipsOf(text::Clip(
                    "a", 172800100, 50, 48000, text::Media("a.wav", text::Range(172800000, 999))))),
                ElementsAre(Placement(0, 50, 100)));
    EXPECT_EQ(result_.session.files.at(0).path, (folder_ / "a.wav").string());
}

TEST_F(OtioReading, AClipWithoutItsOwnRangePlaysAllOfItsMedia) {
    const std::string clip = text::Object(
        "Clip.2", R"(,"name":"a","source_range":null)" + text::Media("a.wav", text::Range(10, 20)));
    EXPECT_THAT(PlacementsOf(ClipsOf(clip)), ElementsAre(Placement(0, 20, 0)));
}

TEST_F(OtioReading, ARangeOfRateZeroIsNone) {
    EXPECT_THAT(PlacementsOf(ClipsOf(
                    text::Clip("a", 7, 9, 48000, text::Media("a.wav", text::Range(0, 0, 0))))),
                ElementsAre(Placement(0, 9, 7)));
}

TEST_F(OtioReading, ATrackShowsItsRange) {
    const std::string children = text::Clip("a", 0, 100) + "," + text::Clip("b", 0, 100);
    EXPECT_THAT(PlacementsOf(ClipsOf(children, R"(,"source_range":)" + text::Range(60, 80))),
                ElementsAre(Placement(0, 40, 60), Placement(40, 40, 0)));
}

TEST_F(OtioReading, ARangeThatIsWhollyOutsideATrackIsIgnored) {
    EXPECT_THAT(PlacementsOf(ClipsOf(text::Clip("a", 0, 100),
                                     R"(,"source_range":)" + text::Range(172800000, 100))),
                ElementsAre(Placement(0, 100, 0)));
}

TEST_F(OtioReading, NestedStacksAreFlattenedInTheirWindow) {
    const std::string nested =
        text::Stack(text::Track(text::Clip("a", 0, 100)) + "," +
                        text::Track(text::Gap(30) + "," + text::Clip("b", 5, 100)),
                    R"(,"source_range":)" + text::Range(20, 40));
    const Session& session = Read(text::Timeline(text::Track(text::Gap(1000) + "," + nested)));
    ASSERT_EQ(session.audioTracks.size(), 2u);
    EXPECT_THAT(PlacementsOf(session.audioTracks[0].clips), ElementsAre(Placement(1000, 40, 20)));
    EXPECT_THAT(PlacementsOf(session.audioTracks[1].clips), ElementsAre(Placement(1010, 30, 5)));
    EXPECT_TRUE(Says(Fidelity::Moved, "a track of its own"));
}

TEST_F(OtioReading, ATransitionBetweenClipsIsACrossfade) {
    const std::vector<AudioClip> clips = ClipsOf(
        text::Clip("a", 0, 100) + "," + text::Dissolve(10, 15) + "," + text::Clip("b", 50, 100));
    EXPECT_THAT(PlacementsOf(clips), ElementsAre(Placement(0, 115, 0), Placement(90, 110, 40)));
    EXPECT_EQ(clips[0].crossFadeTailClipId, static_cast<std::int32_t>(clips[1].id));
    EXPECT_EQ(clips[1].crossFadeHeadClipId, static_cast<std::int32_t>(clips[0].id));
    EXPECT_EQ(clips[0].fadeOut, (orvo::Fade{.startPoint = 90, .endPoint = 115}));
    EXPECT_EQ(clips[1].fadeIn, (orvo::Fade{.startPoint = 0, .endPoint = 25}));
}

TEST_F(OtioReading, ATransitionBesideAGapIsAFade) {
    const std::vector<AudioClip> clips =
        ClipsOf(text::Gap(100) + "," + text::Dissolve(10, 15) + "," + text::Clip("a", 50, 100) +
                "," + text::Dissolve(30, 0));
    EXPECT_THAT(PlacementsOf(clips), ElementsAre(Placement(90, 110, 40)));
    EXPECT_EQ(clips[0].fadeIn, (orvo::Fade{.startPoint = 0, .endPoint = 25}));
    EXPECT_EQ(clips[0].fadeOut, (orvo::Fade{.startPoint = 80, .endPoint = 110}));
}

TEST_F(OtioReading, SpeedIsAStretch) {
    const std::vector<AudioClip> clips =
        ClipsOf(text::Clip("a", 0, 100, 48000,
                           R"(,"effects":[{"OTIO_SCHEMA":"LinearTimeWarp.1","time_scalar":0.5}])"));
    EXPECT_EQ(clips.at(0).duration, 100);
    ASSERT_TRUE(clips[0].stretch);
    EXPECT_EQ(clips[0].stretch->stretchRatio, 2);
    EXPECT_NE(clips[0].stretch->stretchMode, orvo::StretchMode::Off);
}

TEST_F(OtioReading, WhatASessionCannotPlayIsOffline) {
    const std::string children =
        text::Clip("a", 0, 1, 48000, R"(,"effects":[{"OTIO_SCHEMA":"FreezeFrame.1"}])") + "," +
        text::Clip("b", 0, 1, 48000,
                   R"(,"effects":[{"OTIO_SCHEMA":"LinearTimeWarp.1","time_scalar":-1}])") +
        "," +
        text::Clip("c", 0, 1, 48000,
                   R"(,"media_reference":{"OTIO_SCHEMA":"ImageSequenceReference.1"})") +
        "," +
        text::Clip("d", 0, 1, 48000,
                   R"(,"media_reference":{"OTIO_SCHEMA":"GeneratorReference.1"})") +
        "," + text::Clip("e", 0, 1, 48000, text::Media("e.wav"));
    const std::vector<AudioClip> clips = ClipsOf(children);
    ASSERT_EQ(clips.size(), 5u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_TRUE(clips[i].offline) << clips[i].name;
    }
    EXPECT_FALSE(clips[4].offline);
    EXPECT_GE(result_.report.Count(Fidelity::Lost), 4u);
}

TEST_F(OtioReading, UrlsAreTakenInAllTheirForms) {
    std::string children;
    for (const char* const url :
         {"file:///m/a%20b.wav", "file://localhost/D%3a/x.wav", "file://name.wav",
          "/plain/100%.wav", "sub/dir/x.wav", "https://host/x.wav"}) {
        children += (children.empty() ? "" : ",") + text::Clip("c", 0, 1, 48000, text::Media(url));
    }
    ClipsOf(children);
    std::vector<std::string> paths;
    for (const orvo::File& file : result_.session.files) {
        paths.push_back(file.path);
    }
    EXPECT_THAT(paths, ElementsAre("/m/a b.wav", "D:/x.wav", (folder_ / "name.wav").string(),
                                   "/plain/100%.wav", (folder_ / "sub" / "dir" / "x.wav").string(),
                                   "https://host/x.wav"));
}

TEST_F(OtioReading, ClipsOfOneUrlShareAFile) {
    const std::vector<AudioClip> clips =
        ClipsOf(text::Clip("a", 0, 1, 48000, text::Media("/x.wav")) + "," +
                text::Clip("b", 0, 1, 48000, text::Media("/x.wav")));
    EXPECT_EQ(result_.session.files.size(), 1u);
    EXPECT_EQ(clips.at(0).fileId, clips.at(1).fileId);
}

TEST_F(OtioReading, ACollectionGivesItsFirstTimeline) {
    const std::string first = text::Timeline(text::Track(text::Clip("a", 0, 9)));
    const Session& session = Read(
        text::Object("SerializableCollection.1", R"(,"children":[)" + first + "," + first + "]"));
    EXPECT_EQ(session.audioTracks.size(), 1u);
    EXPECT_TRUE(Says(Fidelity::Lost, "only the first timeline"));
}

TEST_F(OtioReading, AClipAloneIsATimeline) {
    const Session& session = Read(text::Clip("a", 3, 9));
    ASSERT_EQ(session.audioTracks.size(), 1u);
    EXPECT_THAT(PlacementsOf(session.audioTracks[0].clips), ElementsAre(Placement(0, 9, 3)));
}

TEST_F(OtioReading, UnknownObjectsAreSaid) {
    EXPECT_THAT(PlacementsOf(
                    ClipsOf(text::Object("Wormhole.7", R"(,"source_range":)" + text::Range(0, 40)) +
                            "," + text::Clip("a", 0, 9))),
                ElementsAre(Placement(40, 9, 0)));
    EXPECT_TRUE(Says(Fidelity::Lost, "nothing is known"));
}

TEST_F(OtioReading, MarkersGoIntoTheMetadata) {
    const std::string marker =
        R"(,"markers":[{"OTIO_SCHEMA":"Marker.2","name":"Here","marked_range":)" +
        text::Range(20, 5) + "}]";
    Read(
        text::Timeline(text::Track(text::Gap(100) + "," + text::Clip("a", 10, 50, 48000, marker))));
    EXPECT_THAT(result_.session.xmpMetadata, HasSubstr("110"));
    EXPECT_THAT(result_.session.xmpMetadata, HasSubstr("Here"));
}

TEST_F(OtioReading, DisabledIsMuted) {
    const Session& session = Read(text::Timeline(
        text::Track(text::Clip("a", 0, 9, 48000, R"(,"enabled":false)"), R"(,"enabled":false)")));
    ASSERT_TRUE(session.audioTracks.at(0).mute);
    EXPECT_EQ(session.audioTracks[0].mute->parameters.at(0).value, 1.0F);
    ASSERT_TRUE(session.audioTracks[0].clips.at(0).mute);
}

TEST_F(OtioReading, NoNumbersInTheMetadataOfOthersDoNoHarm) {
    const std::string metadata =
        R"(,"metadata":{"x":[NaN,Inf,-Infinity,340282366920938463463374607431768211455]})";
    EXPECT_THAT(PlacementsOf(ClipsOf(text::Clip("a", 0, 9, 48000, metadata))),
                ElementsAre(Placement(0, 9, 0)));
}

// Own files that others changed

class OtioChanged : public OtioReading {
protected:
    /// The session after a program replaced something in its file.
    const Session& After(const Session& session, const std::string& from, const std::string& to) {
        const std::filesystem::path file = folder_ / "b.otio";
        EXPECT_TRUE(orvo::ExportSession(session, InterchangeKind::Otio, file));
        std::string content = test::ReadFile(file);
        const std::size_t at = content.find(from);
        EXPECT_NE(at, content.npos);
        content.replace(at, from.size(), to);
        return Read(content);
    }

    static Session OneClip() {
        Session session;
        session.files = {{.id = 5, .path = "/m/a.wav"}};
        session.audioTracks = {{.id = 1, .name = "Voice"}};
        session.audioTracks[0].clips = {{.id = 2,
                                         .fileId = 5,
                                         .sourceInPoint = 10,
                                         .duration = 100,
                                         .startPoint = 50,
                                         .hue = 99,
                                         .name = "Hello"}};
        session.audioTracks[0].clips[0].fadeIn = orvo::Fade{.endPoint = 20, .shape = 7};
        return session;
    }
};

TEST_F(OtioChanged, TheirPlacementCountsAndTheRestIsKept) {
    const Session& session = After(OneClip(), R"("value":50.0)", R"("value":70.0)");
    const AudioClip& clip = session.audioTracks.at(0).clips.at(0);
    EXPECT_EQ(PlacementOf(clip), Placement(70, 100, 10));
    EXPECT_EQ(clip.hue, 99);
    EXPECT_EQ(clip.fadeIn, OneClip().audioTracks[0].clips[0].fadeIn);
}

TEST_F(OtioChanged, TheirFadeCountsAndItsCurveIsKept) {
    const Session& session = After(OneClip(), R"("value":20.0)", R"("value":30.0)");
    EXPECT_EQ(session.audioTracks.at(0).clips.at(0).fadeIn,
              (orvo::Fade{.endPoint = 30, .shape = 7}));
}

TEST_F(OtioChanged, TheirMediaCount) {
    const Session& session = After(OneClip(), "file:///m/a.wav", "file:///n/b.wav");
    ASSERT_EQ(session.files.size(), 1u);
    EXPECT_EQ(session.files[0].id, 5u);
    EXPECT_EQ(session.files[0].path, "/n/b.wav");
}

TEST_F(OtioChanged, ACopiedClipGetsAnIdOfItsOwn) {
    Session two = OneClip();
    two.audioTracks[0].clips.push_back({.id = 3, .duration = 5, .startPoint = 500, .name = "B"});
    const Session& session = After(two, R"({"id":3})", R"({"id":2})");
    const std::vector<AudioClip>& clips = session.audioTracks.at(0).clips;
    ASSERT_EQ(clips.size(), 2u);
    EXPECT_NE(clips[0].id, clips[1].id);
}

TEST_F(OtioChanged, OwnDataThatIsWrongIsSaidAndLeftOut) {
    const Session& session = After(OneClip(), R"("hue":99.0)", R"("hue":"red")");
    EXPECT_TRUE(Says(Fidelity::Lost, "cannot be understood"));
    EXPECT_EQ(PlacementOf(session.audioTracks.at(0).clips.at(0)), Placement(50, 100, 10));
}

TEST_F(OtioChanged, OwnDataOfALaterVersionIsLeftOut) {
    const Session& session = After(OneClip(), R"("version":1)", R"("version":2)");
    EXPECT_TRUE(Says(Fidelity::Lost, "version that is not known"));
    EXPECT_EQ(PlacementOf(session.audioTracks.at(0).clips.at(0)), Placement(50, 100, 10));
}

}  // namespace
