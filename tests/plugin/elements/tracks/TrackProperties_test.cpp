#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "tests/plugin/elements/ElementFixture.h"
#include "tests/plugin/elements/TrackSamples.h"

// Whatever tracks a host has, everything that is stored of them comes back.

namespace orvo {
namespace {

namespace gen = rc::gen;

class TrackProperties : public ::test::ElementFixture {};

std::string AnyText() {
    static const std::vector<std::string> pieces = {
        "a",  "Z", "0",   " ",      "\t",     "\n",         "\r",    "<",    ">",   "&",
        "\"", "'", "]]>", "\u00E4", "\u2029", "\U0001F3B5", "&amp;", "<!--", "true"};
    std::string text;
    for (const std::string& piece :
         *gen::container<std::vector<std::string>>(gen::elementOf(pieces))) {
        text += piece;
    }
    return text;
}

template <class Number>
Number AnyReal() {
    return *gen::suchThat(gen::arbitrary<Number>(),
                          [](Number value) { return std::isfinite(value); });
}

template <class Integer>
Integer AnyInteger() {
    return *gen::oneOf(
        gen::arbitrary<Integer>(),
        gen::element(std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max(),
                     Integer(0), Integer(1), static_cast<Integer>(-1)));
}

bool AnyBool() {
    return *gen::arbitrary<bool>();
}

template <class Any>
auto Maybe(Any any) -> std::optional<decltype(any())> {
    if (*gen::inRange(0, 4) == 0) {
        return std::nullopt;
    }
    return any();
}

template <class Any>
auto List(std::size_t longest, Any any) {
    std::vector<decltype(any())> list(*gen::inRange<std::size_t>(0, longest + 1));
    for (auto& each : list) {
        each = any();
    }
    return list;
}

std::vector<kelcore::byte> AnyBytes() {
    return List(5, [] { return kelcore::byte(*gen::arbitrary<unsigned char>()); });
}

Keyframe AnyKeyframe() {
    return {AnyReal<float>(), AnyInteger<kelcore::int64>(),
            static_cast<orvo::KeyframeType>(AnyBool()), AnyBool()};
}

AutomationLane AnyLane() {
    return {AnyBool(), AnyBool(), List(3, AnyKeyframe)};
}

Parameter AnyParameter() {
    return {Maybe(AnyReal<float>), AnyText(), AnyBool(), Maybe(AnyLane)};
}

Component AnyComponent() {
    Component component;
    component.guid = AnyText();
    component.componentId = AnyText();
    component.name = AnyText();
    component.presetName = AnyText();
    component.powered = AnyBool();
    component.editorVisible = AnyBool();
    component.editorRect = {AnyInteger<kelcore::int32>(), AnyInteger<kelcore::int32>(),
                            AnyInteger<kelcore::int32>(), AnyInteger<kelcore::int32>()};
    component.presetChunk = AnyBytes();
    for (int i = *gen::inRange(0, 3); i > 0; --i) {
        component.parameters[*gen::inRange<kelcore::uint32>(0, 20)] = AnyParameter();
    }
    return component;
}

ChannelRoute AnyRoute() {
    return {AnyInteger<kelcore::int32>(), AnyInteger<kelcore::int32>()};
}

EffectsSlot AnySlot() {
    EffectsSlot slot;
    slot.slotIndex = AnyInteger<kelcore::uint32>();
    slot.bypassed = AnyBool();
    slot.sideChainChannels = AnyInteger<kelcore::uint32>();
    slot.inputChannels = List(2, AnyRoute);
    slot.outputChannels = List(2, AnyRoute);
    slot.component = Maybe(AnyComponent);
    return slot;
}

EffectsRack AnyRack() {
    return {AnyBool(), Maybe(AnyComponent), Maybe(AnyComponent), Maybe(AnyComponent),
            List(2, [] { return Maybe(AnySlot); })};
}

SendSlot AnySendSlot() {
    return {AnyInteger<kelcore::uint32>(), AnyInteger<kelcore::int32>(), AnyBool(),
            AnyInteger<kelcore::int32>(),  Maybe(AnyComponent),          Maybe(AnyComponent)};
}

SendList AnySends() {
    return {List(2, [] { return Maybe(AnySendSlot); })};
}

AudioTrack AnyTrack(kelcore::uint32 id) {
    AudioTrack track;
    track.id = id;
    track.index = AnyInteger<kelcore::uint32>();
    track.kind = TrackKind{*gen::element<kelcore::uint32>(1, 2, 3, 4, 5, 0, 7, 4294967295)};
    track.name = AnyText();
    track.hue = AnyReal<double>();
    track.height = AnyInteger<kelcore::int32>();
    track.selected = AnyBool();
    track.minimized = AnyBool();
    track.visible = AnyBool();
    track.automationLaneOpen = AnyBool();
    track.phaseInverted = AnyBool();
    track.preRendered = AnyBool();
    track.preRenderedFile = AnyText();
    track.sumToMono = AnyBool();
    track.audioChannelType = ChannelType{*gen::element<kelcore::uint32>(0, 1, 2, 4, 6, 4294967295)};
    track.solo = AnyBool();
    track.recordArmed = AnyBool();
    track.monitoring = AnyBool();
    track.soloSafe = AnyBool();
    track.outputTrackId = AnyInteger<kelcore::int32>();
    track.inputId = AnyInteger<kelcore::int32>();
    track.hardwareOutputId = AnyInteger<kelcore::int32>();
    track.automationMode = AnyInteger<kelcore::int32>();
    track.instrument = Maybe([] { return InstrumentTrack{AnyText(), AnyBool()}; });
    track.fader = Maybe(AnyComponent);
    track.mute = Maybe(AnyComponent);
    track.pan = Maybe(AnyComponent);
    track.eq = Maybe(AnyComponent);
    track.effectsRack = Maybe(AnyRack);
    track.editParameters = List(2, [] {
        return EditParameter{AnyInteger<kelcore::uint32>(), AnyInteger<kelcore::uint32>()};
    });
    track.sendList = Maybe(AnySends);
    track.clipsOnly = *gen::inRange(0, 8) == 0;
    return track;
}

VideoTrack AnyVideoTrack(kelcore::uint32 id) {
    VideoTrack track;
    track.id = id;
    track.index = AnyInteger<kelcore::uint32>();
    track.name = AnyText();
    track.hue = AnyReal<double>();
    track.height = AnyInteger<kelcore::int32>();
    track.selected = AnyBool();
    track.minimized = AnyBool();
    return track;
}

RC_GTEST_FIXTURE_PROP(TrackProperties, WhatIsStoredOfAnyTracksComesBack, ()) {
    Session session;
    kelcore::uint32 id = *gen::element<kelcore::uint32>(0, 4294967290);
    session.audioTracks = List(3, [&id] { return AnyTrack(id++); });
    const Session back = ThroughFile(session);
    RC_ASSERT(back.audioTracks == ::test::StoredTracks(session.audioTracks));
}

RC_GTEST_FIXTURE_PROP(TrackProperties, WhatCameBackTwiceComesBackUnchanged, ()) {
    Session session;
    kelcore::uint32 id = 0;
    session.audioTracks = List(2, [&id] { return AnyTrack(id++); });
    const Session twice = ThroughFile(ThroughFile(session));
    RC_ASSERT(ThroughFile(twice).audioTracks == twice.audioTracks);
}

RC_GTEST_FIXTURE_PROP(TrackProperties, WhatIsStoredOfAnyVideoTracksComesBack, ()) {
    Session session;
    kelcore::uint32 id = *gen::element<kelcore::uint32>(0, 4294967290);
    session.videoTracks = List(3, [&id] { return AnyVideoTrack(id++); });
    std::vector<VideoTrack> expected;
    for (const VideoTrack& track : session.videoTracks) {
        expected.push_back(test::StoredVideoTrack(track));
    }
    RC_ASSERT(ThroughFile(session).videoTracks == expected);
}

RC_GTEST_FIXTURE_PROP(TrackProperties, AnyVisibilityPresetsComeBack, ()) {
    Session session;
    session.trackVisibilityPresets = List(3, [] {
        TrackVisibilityPreset preset{AnyInteger<kelcore::uint32>(), AnyText(), {}};
        preset.tracks = List(3, [] {
            return TrackVisibility{AnyInteger<kelcore::uint32>(), AnyReal<float>(), AnyBool()};
        });
        return preset;
    });
    RC_ASSERT(ThroughFile(session).trackVisibilityPresets == session.trackVisibilityPresets);
}

}  // namespace
}  // namespace orvo
