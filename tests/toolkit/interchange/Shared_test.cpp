#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/HueColour.h"
#include "toolkit/interchange/Lanes.h"
#include "toolkit/interchange/Levels.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/MediaFacts.h"
#include "toolkit/interchange/Overlaps.h"
#include "toolkit/interchange/XmlWriter.h"

namespace {

using namespace toolkit::interchange;
using orvo::AudioClip;
using orvo::LevelUnit;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::size_t kAll = 1000;

// Levels

TEST(InterchangeLevels, ADecibelLevelIsAFactor) {
    EXPECT_DOUBLE_EQ(ToAmplitude(0, LevelUnit::Decibels), 1);
    EXPECT_NEAR(ToAmplitude(-6.0205999, LevelUnit::Decibels), 0.5, 1e-8);
    EXPECT_DOUBLE_EQ(ToAmplitude(0.25, LevelUnit::Amplitude), 0.25);
}

TEST(InterchangeLevels, SilenceIsFiniteBothWays) {
    EXPECT_EQ(ToAmplitude(-144, LevelUnit::Decibels), 0);
    EXPECT_EQ(ToAmplitude(-std::numeric_limits<double>::infinity(), LevelUnit::Decibels), 0);
    EXPECT_EQ(FromAmplitude(0, LevelUnit::Decibels), -144);
    EXPECT_EQ(FromAmplitude(1e-30, LevelUnit::Decibels), -144);
}

TEST(InterchangeLevels, LongRisesBecomeShortPieces) {
    EXPECT_EQ(PiecesBetween(0, -2.5, LevelUnit::Decibels), 1u);
    EXPECT_EQ(PiecesBetween(0, -6, LevelUnit::Decibels), 3u);
    EXPECT_EQ(PiecesBetween(-500, -300, LevelUnit::Decibels), 1u);
    EXPECT_EQ(PiecesBetween(0, 60, LevelUnit::Amplitude), 1u);
}

// Hues

TEST(InterchangeHue, EveryHueComesBackWithinHalfADegree) {
    for (double hue = 0; hue < 360; hue += 0.25) {
        const auto colour = ColourOf(hue);
        ASSERT_TRUE(colour);
        const double distance = std::abs(HueOf(*colour) - hue);
        EXPECT_LE(std::min(distance, 360 - distance), 0.5) << hue;
    }
}

TEST(InterchangeHue, AColourIsHexadecimalText) {
    EXPECT_EQ(ColourOf(0)->Hex(), "#d95757");
    EXPECT_EQ(Rgb::FromHex("#d95757"), ColourOf(0));
    EXPECT_EQ(Rgb::FromHex("#D95757ff"), ColourOf(0));
    EXPECT_EQ(Rgb::FromHex("red"), std::nullopt);
    EXPECT_EQ(Rgb::FromHex("#12345g"), std::nullopt);
}

TEST(InterchangeHue, GreyAndNegativeHuesAreNoColour) {
    EXPECT_EQ(ColourOf(-1), std::nullopt);
    EXPECT_EQ(ColourOf(std::nan("")), std::nullopt);
    EXPECT_EQ(HueOf({.red = 9, .green = 9, .blue = 9}), -1);
}

// Lanes

orvo::AutomationLane Lane(std::vector<orvo::Keyframe> keyframes) {
    return {.keyframes = std::move(keyframes)};
}

TEST(InterchangeLanes, PointsAreInOrderOfTimeAndTheLastOfOneOffsetCounts) {
    Reporter reporter(kAll);
    const auto points = PointsOf(Lane({{.value = 3, .sampleOffset = 20},
                                       {.value = 1, .sampleOffset = 10},
                                       {.value = 2, .sampleOffset = 10}}),
                                 {}, reporter);
    EXPECT_THAT(points, ElementsAre(LanePoint{.offset = 10, .value = 2},
                                    LanePoint{.offset = 20, .value = 3}));
    EXPECT_TRUE(reporter.Report().IsFaithful());
}

TEST(InterchangeLanes, SplinesAreReportedAsStraightLines) {
    Reporter reporter(kAll);
    orvo::AutomationLane lane = Lane({{.value = 0}, {.value = 1, .sampleOffset = 5}});
    lane.enableSplines = true;
    PointsOf(lane, {}, reporter);
    EXPECT_EQ(reporter.Report().Count(orvo::Fidelity::Approximated), 1u);
}

TEST(InterchangeLanes, AmplitudesFollowStraightDecibelsWithinATenth) {
    const auto amplitudes = AmplitudesOf(
        {{.offset = 0, .value = -30}, {.offset = 48000, .value = 6}}, LevelUnit::Decibels);
    ASSERT_GT(amplitudes.size(), 10u);
    for (std::size_t i = 0; i + 1 < amplitudes.size(); ++i) {
        const LanePoint& a = amplitudes[i];
        const LanePoint& b = amplitudes[i + 1];
        const double middle = static_cast<double>(a.offset + b.offset) / 2;
        const double meant = -30 + 36 * middle / 48000;
        EXPECT_NEAR(20 * std::log10((a.value + b.value) / 2), meant, 0.1);
    }
}

TEST(InterchangeLanes, AHoldBecomesTwoPointsOneSampleApart) {
    const auto points = WithoutHolds(
        {{.offset = 0, .value = 1, .holds = true}, {.offset = 9, .value = 2, .holds = true}});
    EXPECT_THAT(points,
                ElementsAre(LanePoint{.offset = 0, .value = 1}, LanePoint{.offset = 8, .value = 1},
                            LanePoint{.offset = 9, .value = 2}));
}

TEST(InterchangeLanes, AHoldOfOneSampleNeedsNoSecondPoint) {
    const auto points =
        WithoutHolds({{.offset = 0, .value = 1, .holds = true}, {.offset = 1, .value = 2}});
    EXPECT_EQ(points.size(), 2u);
}

orvo::Component Control(float value, std::int64_t offset) {
    orvo::Component control;
    control.parameters[0] = {.value = value,
                             .automation = Lane({{.value = value, .sampleOffset = offset}})};
    return control;
}

TEST(InterchangeLanes, PointsOutsideOfTheirClipAreWarnedOf) {
    AudioClip clip{.duration = 100, .startPoint = 5000};
    clip.gain = Control(-3, 5010);
    Reporter reporter(kAll);
    ClipLaneOf(clip.gain, 0, clip, {}, {}, reporter);
    EXPECT_EQ(reporter.TakeWarnings().size(), 1u);
    Reporter fitting(kAll);
    const ParameterLane lane =
        ClipLaneOf(clip.gain, 0, clip, {.clipAutomation = orvo::ClipOrigin::Timeline}, {}, fitting);
    EXPECT_EQ(lane.points.at(0).offset, 10);
    EXPECT_THAT(fitting.TakeWarnings(), IsEmpty());
}

TEST(InterchangeLanes, AnAbsentControlHasTheAbsentValue) {
    Reporter reporter(kAll);
    EXPECT_EQ(LaneOf(std::nullopt, -7, {}, reporter).value, -7);
    EXPECT_EQ(LaneOf(orvo::Component(), -7, {}, reporter).value, -7);
}

// Fades

AudioClip FadedClip(std::int64_t start, std::int64_t end) {
    return {.sourceInPoint = 70,
            .duration = 1000,
            .startPoint = 5000,
            .fadeIn = orvo::Fade{.startPoint = start, .endPoint = end}};
}

TEST(InterchangeFades, LengthsCount) {
    Reporter reporter(kAll);
    EXPECT_EQ(FadesOf(FadedClip(0, 300), {}, {}, reporter).in, 300);
    EXPECT_THAT(reporter.TakeWarnings(), IsEmpty());
    EXPECT_TRUE(reporter.Report().IsFaithful());
}

TEST(InterchangeFades, PointsOfAnotherOriginAreWarnedOf) {
    for (const std::int64_t origin : {70, 5000, 333}) {
        Reporter reporter(kAll);
        EXPECT_EQ(FadesOf(FadedClip(origin, origin + 300), {}, {}, reporter).in, 300);
        EXPECT_EQ(reporter.TakeWarnings().size(), 1u) << origin;
    }
    Reporter reporter(kAll);
    FadesOf(FadedClip(5000, 5300), {.fadePoints = orvo::ClipOrigin::Timeline}, {}, reporter);
    EXPECT_THAT(reporter.TakeWarnings(), IsEmpty());
}

TEST(InterchangeFades, OnesThatDoNotFitAreCutAndReported) {
    for (const std::int64_t end : {1001, -1}) {
        Reporter reporter(kAll);
        EXPECT_EQ(FadesOf(FadedClip(0, end), {}, {}, reporter).in, end < 0 ? 0 : 1000);
        EXPECT_EQ(reporter.Report().Count(orvo::Fidelity::Approximated), 1u);
    }
}

TEST(InterchangeFades, ShapesAreLost) {
    AudioClip clip = FadedClip(0, 300);
    clip.fadeIn->shape = 4;
    Reporter reporter(kAll);
    FadesOf(clip, {}, {}, reporter);
    ASSERT_EQ(reporter.Report().Count(orvo::Fidelity::Lost), 1u);
    EXPECT_EQ(reporter.Report().facts[0].place, "/fadeIn/shape");
    EXPECT_EQ(reporter.Report().facts[0].value, "4");
}

// Stretches and loops

TEST(InterchangeClipTime, ARatioCountsOnlyIfTheModeIsOn) {
    AudioClip clip;
    EXPECT_EQ(StretchOf(clip, {}), 1);
    clip.stretch = orvo::ClipStretch{.stretchMode = orvo::StretchMode::Off, .stretchRatio = 2};
    EXPECT_EQ(StretchOf(clip, {}), 1);
    clip.stretch->stretchMode = orvo::StretchMode::Rendered;
    EXPECT_EQ(StretchOf(clip, orvo::StretchMeaning::TimelineBySource), 2);
    EXPECT_EQ(StretchOf(clip, orvo::StretchMeaning::SourceByTimeline), 0.5);
    for (const double ratio : {1.00000017, 0.0, -2.0, std::nan("")}) {
        clip.stretch->stretchRatio = ratio;
        EXPECT_EQ(StretchOf(clip, {}), 1) << ratio;
    }
}

TEST(InterchangeClipTime, ALoopedClipIsPiecesOfItsFile) {
    const AudioClip clip{.sourceInPoint = 130, .duration = 250, .startPoint = 1000, .looped = true};
    EXPECT_THAT(PiecesOf(clip, 1, 100),
                ElementsAre(Piece{.start = 1000, .duration = 70, .sourceIn = 30},
                            Piece{.start = 1070, .duration = 100, .sourceIn = 0},
                            Piece{.start = 1170, .duration = 80, .sourceIn = 0}));
    EXPECT_EQ(PiecesOf(clip, 1, 0).size(), 1u);
    EXPECT_EQ(PiecesOf(clip, 1, 1, 10).size(), 10u);
}

TEST(InterchangeClipTime, PiecesOfAStretchedLoopDoNotDrift) {
    const AudioClip clip{.duration = 100'000, .looped = true};
    const auto pieces = PiecesOf(clip, 1.0 / 3, 100);
    EXPECT_EQ(pieces.size(), 3000u);
    EXPECT_EQ(pieces.back().start, std::llround(2999 * 100 / 3.0));
    EXPECT_EQ(pieces.back().start + pieces.back().duration, 100'000);
}

// Overlaps

TEST(InterchangeOverlaps, AutomaticAndLinkedOnesAreCrossfades) {
    std::vector<AudioClip> clips = {{.id = 1, .duration = 100, .startPoint = 0},
                                    {.id = 2, .duration = 100, .startPoint = 80}};
    const Overlap crossfade{.first = 0, .second = 1, .isCrossfade = true, .start = 80, .end = 100};
    EXPECT_THAT(OverlapsOf(clips), ElementsAre(crossfade));
    clips[0].autoCrossfade = false;
    EXPECT_FALSE(OverlapsOf(clips).at(0).isCrossfade);
    clips[0].crossFadeTailClipId = 2;
    EXPECT_THAT(OverlapsOf(clips), ElementsAre(crossfade));
    clips[0].crossFadeTailClipId = orvo::kNone;
    clips[1].crossFadeHeadClipId = 1;
    EXPECT_THAT(OverlapsOf(clips), ElementsAre(crossfade));
}

TEST(InterchangeOverlaps, AClipInsideAnotherIsNoCrossfade) {
    const std::vector<AudioClip> clips = {{.id = 1, .duration = 100, .startPoint = 0},
                                          {.id = 2, .duration = 10, .startPoint = 20}};
    ASSERT_EQ(OverlapsOf(clips).size(), 1u);
    EXPECT_FALSE(OverlapsOf(clips)[0].isCrossfade);
    EXPECT_EQ(OverlapsOf(clips)[0].end, 30);
}

TEST(InterchangeOverlaps, ManyClipsAtOnceTakeLittleTime) {
    std::vector<AudioClip> clips(50'000);
    for (std::size_t i = 0; i < clips.size(); ++i) {
        clips[i] = {.id = static_cast<std::uint32_t>(i),
                    .duration = 1'000'000,
                    .startPoint = static_cast<std::int64_t>(i)};
    }
    EXPECT_EQ(OverlapsOf(clips).size(), clips.size() - 1);
}

// Markers and properties of the work

orvo::Session SessionWith(std::string xmp) {
    orvo::Session session;
    session.xmpMetadata = std::move(xmp);
    return session;
}

constexpr const char* kPacket = R"(<?xpacket begin=""?><x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"><rdf:Description rdf:about=""
 xmlns:xmpDM="http://ns.adobe.com/xmp/1.0/DynamicMedia/" xmlns:dc="http://purl.org/dc/elements/1.1/"
 xmpDM:artist="Ann"><dc:title><rdf:Alt><rdf:li xml:lang="x-default">Waltz</rdf:li></rdf:Alt></dc:title>
<xmpDM:Tracks><rdf:Bag><rdf:li rdf:parseType="Resource"><xmpDM:frameRate>f24000</xmpDM:frameRate>
<xmpDM:markers><rdf:Seq><rdf:li><rdf:Description xmpDM:startTime="12000" xmpDM:name="Verse"/></rdf:li>
<rdf:li rdf:parseType="Resource"><xmpDM:startTime>24000</xmpDM:startTime><xmpDM:duration>3</xmpDM:duration>
<xmpDM:comment>loud</xmpDM:comment></rdf:li></rdf:Seq></xmpDM:markers></rdf:li></rdf:Bag></xmpDM:Tracks>
</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end="w"?>)";

TEST(InterchangeMarkers, AreReadInBothFormsAtTheirRate) {
    EXPECT_THAT(MarkersOf(SessionWith(kPacket)),
                ElementsAre(Marker{.start = 24000, .name = "Verse"},
                            Marker{.start = 48000, .duration = 6, .comment = "loud"}));
}

TEST(InterchangeMarkers, ComeBackAndTheRestOfThePacketStays) {
    const std::vector<Marker> markers = {
        {.start = 7, .duration = 2, .name = "a & b", .comment = "c"}, {.start = -9, .name = ""}};
    for (const char* const packet : {"", kPacket, "no xml <"}) {
        const std::string with = WithMarkers(packet, markers, 48000);
        const auto read = MarkersOf(SessionWith(with));
        ASSERT_GE(read.size(), 2u) << with;
        EXPECT_THAT(std::vector(read.end() - 2, read.end()), testing::ElementsAreArray(markers));
    }
    EXPECT_THAT(WithMarkers(kPacket, markers, 48000), HasSubstr("Waltz"));
}

TEST(InterchangeMarkers, OnesWithoutAPlaceAreLeftOut) {
    std::string packet = kPacket;
    packet.replace(packet.find("12000"), 5, "1e300");
    EXPECT_EQ(MarkersOf(SessionWith(packet)).size(), 1u);
    EXPECT_THAT(MarkersOf(SessionWith("")), IsEmpty());
    EXPECT_THAT(MarkersOf(SessionWith("<a><b></a>")), IsEmpty());
}

TEST(InterchangeMarkers, PropertiesOfTheWorkComeBack) {
    const auto properties = WorkPropertiesOf(SessionWith(kPacket));
    EXPECT_THAT(properties, testing::Contains(WorkProperty{"dc:title", "Waltz"}));
    EXPECT_THAT(properties, testing::Contains(WorkProperty{"xmpDM:artist", "Ann"}));
    const std::string with = WithWorkProperties("", {{"dc:title", "A < B"}});
    EXPECT_THAT(WorkPropertiesOf(SessionWith(with)),
                testing::Contains(WorkProperty{"dc:title", "A < B"}));
}

// XML

TEST(InterchangeXml, WritesElementsIndented) {
    std::string text;
    XmlWriter xml([&](std::string_view block) { text += block; });
    xml.Open("Project").Attribute("version", "1.0").Attribute("id", 7).Attribute("ok", true);
    xml.Open("Time").Attribute("value", 0.1);
    xml.Close();
    xml.Open("Name");
    xml.Text("a\"b <c>");
    xml.Close();
    xml.Close();
    EXPECT_EQ(text,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<Project version=\"1.0\" id=\"7\" ok=\"true\">\n"
              "  <Time value=\"0.1\"/>\n"
              "  <Name>a\"b &lt;c&gt;</Name>\n"
              "</Project>\n");
}

TEST(InterchangeXml, CarriesEveryTextThatXmlCan) {
    std::string text;
    XmlWriter xml([&](std::string_view block) { text += block; });
    xml.Open("a").Attribute("b", "\"\n\t\r<&\x01\xFF\xED\xA0\x80é\xEF\xBF\xBF");
    xml.Close();
    EXPECT_THAT(text, HasSubstr("b=\"&quot;&#10;&#9;&#13;&lt;&amp;\uFFFD\uFFFD\uFFFDé\uFFFD\""));
}

// Media

TEST(InterchangeMedia, WhatCannotBeLookedIntoIsGuessedAndReported) {
    orvo::Session session;
    session.files = {{.id = 5, .path = "/nowhere/a.wav"}};
    session.audioTracks = {{.id = 1, .audioChannelType = orvo::ChannelType::Mono}};
    session.audioTracks[0].clips = {{.fileId = 5, .sourceInPoint = 50, .duration = 100}};
    Reporter reporter(kAll);
    const orvo::Conventions conventions;
    MediaFacts media(session, conventions, reporter);
    EXPECT_EQ(media.Of(5).frames, 150);
    EXPECT_EQ(media.Of(5).channels, 1u);
    EXPECT_TRUE(media.Of(5).isGuessed);
    EXPECT_FALSE(media.Of(5).exists);
    EXPECT_TRUE(media.Of(6).isGuessed);
    ASSERT_EQ(reporter.Report().Count(orvo::Fidelity::Guessed), 1u);
    EXPECT_EQ(reporter.Report().facts[0].place, "/files/0");
}

}  // namespace
