#include "tests/toolkit/interchange/dawproject/CarriedParts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Lookup.h>

namespace test {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Component;

constexpr double kLevelTolerance = 1e-3;
constexpr double kLaneTolerance = 0.11;
constexpr double kSilentLevel = -144;

double LevelIn(double level) {
    return std::max(level, kSilentLevel);
}

double ValueOf(const std::optional<Component>& control, double absent) {
    if (!control || !control->parameters.contains(0)) {
        return absent;
    }
    return control->parameters.at(0).value.value_or(static_cast<float>(absent));
}

using Lane = std::map<std::int64_t, orvo::Keyframe>;

Lane LaneOfControl(const std::optional<Component>& control) {
    Lane lane;
    if (control && control->parameters.contains(0) && control->parameters.at(0).automation) {
        std::vector<orvo::Keyframe> keyframes = control->parameters.at(0).automation->keyframes;
        std::ranges::stable_sort(keyframes, {}, &orvo::Keyframe::sampleOffset);
        for (const orvo::Keyframe& keyframe : keyframes) {
            lane[keyframe.sampleOffset] = keyframe;
        }
    }
    return lane;
}

double ValueAt(const Lane& lane, std::int64_t offset) {
    const auto next = lane.upper_bound(offset);
    if (next == lane.begin()) {
        return next->second.value;
    }
    const orvo::Keyframe& last = std::prev(next)->second;
    if (next == lane.end() || last.type == orvo::KeyframeType::Hold) {
        return last.value;
    }
    const double share = static_cast<double>(offset - last.sampleOffset) /
                         static_cast<double>(next->first - last.sampleOffset);
    return last.value + share * (next->second.value - last.value);
}

/// Every keyframe is there, and those between them lie on the lines.
void ExpectLane(const std::optional<Component>& written, const std::optional<Component>& read,
                const std::string& what) {
    const Lane one = LaneOfControl(written);
    const Lane other = LaneOfControl(read);
    ASSERT_EQ(one.empty(), other.empty()) << what;
    for (const auto& [offset, keyframe] : one) {
        ASSERT_TRUE(other.contains(offset)) << what << " at " << offset;
        EXPECT_NEAR(LevelIn(keyframe.value), other.at(offset).value, kLevelTolerance)
            << what << " at " << offset;
        EXPECT_EQ(keyframe.type, other.at(offset).type) << what << " at " << offset;
    }
    for (const auto& [offset, keyframe] : other) {
        EXPECT_NEAR(LevelIn(ValueAt(one, offset)), keyframe.value, kLaneTolerance)
            << what << " at " << offset;
    }
}

void ExpectLevel(const std::optional<Component>& written, const std::optional<Component>& read,
                 const std::string& what) {
    EXPECT_NEAR(LevelIn(ValueOf(written, 0)), ValueOf(read, 0), kLevelTolerance) << what;
    ExpectLane(written, read, what);
}

void ExpectHue(double written, double read, const std::string& what) {
    if (!(written >= 0)) {
        EXPECT_EQ(read, -1) << what;
        return;
    }
    const double distance = std::abs(std::fmod(written, 360) - read);
    EXPECT_LE(std::min(distance, 360 - distance), 0.5) << what;
}

// Effects

struct EffectInRack {
    const Component* component = nullptr;
    bool isBypassed = false;
};

std::vector<EffectInRack> EffectsOf(const AudioTrack& track) {
    std::vector<EffectInRack> effects;
    if (track.effectsRack) {
        for (const auto& slot : track.effectsRack->slots) {
            if (slot && slot->component) {
                effects.push_back({.component = &*slot->component, .isBypassed = slot->bypassed});
            }
        }
    }
    if (track.eq) {
        effects.push_back({.component = &*track.eq, .isBypassed = !track.eq->powered});
    }
    return effects;
}

void ExpectEffect(const EffectInRack& written, const EffectInRack& read, const std::string& what) {
    const Component& one = *written.component;
    const Component& other = *read.component;
    EXPECT_EQ(one.name, other.name) << what;
    EXPECT_EQ(one.guid.empty() ? one.componentId : one.guid,
              other.guid.empty() ? other.componentId : other.guid)
        << what;
    EXPECT_EQ(written.isBypassed, read.isBypassed) << what;
    EXPECT_EQ(one.presetChunk, other.presetChunk) << what;
    ASSERT_EQ(one.parameters.size(), other.parameters.size()) << what;
    for (const auto& [number, parameter] : one.parameters) {
        ASSERT_TRUE(other.parameters.contains(number)) << what;
        const orvo::Parameter& match = other.parameters.at(number);
        EXPECT_EQ(parameter.name, match.name) << what;
        EXPECT_EQ(parameter.value, match.value) << what;
        EXPECT_EQ(parameter.automation.has_value(), match.automation.has_value()) << what;
        if (parameter.automation && match.automation) {
            EXPECT_EQ(parameter.automation->keyframes, match.automation->keyframes) << what;
        }
    }
}

// Clips

std::int64_t LengthOf(const std::optional<orvo::Fade>& fade, std::int64_t duration) {
    return fade ? std::clamp<std::int64_t>(fade->endPoint - fade->startPoint, 0, duration) : 0;
}

std::string PathOf(const orvo::Session& session, std::uint32_t fileId) {
    const orvo::File* const file = orvo::FindFile(session, fileId);
    return file != nullptr ? file->path : "";
}

template <class Clip>
void ExpectPlacement(const Clip& written, const Clip& read, const std::string& what) {
    EXPECT_EQ(written.name, read.name) << what;
    EXPECT_EQ(written.startPoint, read.startPoint) << what;
    EXPECT_EQ(written.duration, read.duration) << what;
    EXPECT_EQ(written.sourceInPoint, read.sourceInPoint) << what;
    ExpectHue(written.hue, read.hue, what);
}

double StretchIn(const AudioClip& clip) {
    return clip.stretch && clip.stretch->stretchMode != orvo::StretchMode::Off
               ? clip.stretch->stretchRatio
               : 1;
}

void ExpectClip(const AudioClip& written, const AudioClip& read, const std::string& what) {
    ExpectPlacement(written, read, what);
    EXPECT_EQ(written.looped, read.looped) << what;
    EXPECT_NEAR(StretchIn(written), StretchIn(read), 1e-9) << what;
    EXPECT_EQ(LengthOf(written.fadeIn, written.duration), LengthOf(read.fadeIn, read.duration))
        << what;
    EXPECT_EQ(LengthOf(written.fadeOut, written.duration), LengthOf(read.fadeOut, read.duration))
        << what;
    EXPECT_EQ(ValueOf(written.mute, 0) >= 0.5, ValueOf(read.mute, 0) >= 0.5) << what;
    if (LaneOfControl(written.gain).empty()) {
        ExpectLevel(written.gain, read.gain, what + ", gain");
    } else {
        ExpectLane(written.gain, read.gain, what + ", gain");
    }
    if (LaneOfControl(written.pan).empty()) {
        EXPECT_NEAR(ValueOf(written.pan, 0), ValueOf(read.pan, 0), 1e-6) << what;
    } else {
        ExpectLane(written.pan, read.pan, what + ", pan");
    }
}

template <class Clips, class Expect>
void ExpectAll(const Clips& written, const Clips& read, const std::string& what,
               const Expect& expect) {
    ASSERT_EQ(written.size(), read.size()) << what;
    for (std::size_t i = 0; i < written.size(); ++i) {
        expect(written[i], read[i], what + ", " + std::to_string(i));
    }
}

// Tracks

/// The name of the track that an id leads to, which stands for it.
std::string NameOf(const orvo::Session& session, std::int32_t trackId) {
    const AudioTrack* const track =
        trackId >= 0 ? orvo::FindAudioTrack(session, static_cast<std::uint32_t>(trackId)) : nullptr;
    return track != nullptr ? track->name : "";
}

std::vector<orvo::SendSlot> SendsOf(const orvo::Session& session, const AudioTrack& track) {
    std::vector<orvo::SendSlot> sends;
    if (track.sendList) {
        for (const auto& slot : track.sendList->slots) {
            if (slot && !NameOf(session, slot->sendOutputId).empty()) {
                sends.push_back(*slot);
            }
        }
    }
    return sends;
}

/// Without the metronome's own.
std::vector<const AudioTrack*> TracksOf(const orvo::Session& session) {
    std::vector<const AudioTrack*> tracks = orvo::AudioTracksInOrder(session);
    std::erase_if(tracks, [&](const AudioTrack* track) {
        return session.metronome.track && track == &*session.metronome.track;
    });
    return tracks;
}

class Comparison {
public:
    Comparison(const orvo::Session& written, const orvo::Session& read)
        : written_(written), read_(read) {}

    void ExpectTrack(const AudioTrack& one, const AudioTrack& other) const {
        const std::string what = one.name;
        EXPECT_EQ(one.name, other.name);
        EXPECT_EQ(one.kind, other.kind) << what;
        EXPECT_EQ(one.audioChannelType, other.audioChannelType) << what;
        EXPECT_EQ(one.solo, other.solo) << what;
        ExpectHue(one.hue, other.hue, what);
        if (one.outputTrackId > 0) {
            EXPECT_EQ(NameOf(written_, one.outputTrackId), NameOf(read_, other.outputTrackId));
        }
        ExpectLevel(one.fader, other.fader, what + ", fader");
        EXPECT_NEAR(ValueOf(one.pan, 0), ValueOf(other.pan, 0), 1e-6) << what;
        ExpectLane(one.pan, other.pan, what + ", pan");
        EXPECT_EQ(ValueOf(one.mute, 0) >= 0.5, ValueOf(other.mute, 0) >= 0.5) << what;
        ExpectAll(EffectsOf(one), EffectsOf(other), what + ", effects", ExpectEffect);
        ExpectSends(one, other);
        ExpectAll(one.clips, other.clips, what, [&](const auto& a, const auto& b, const auto& at) {
            ExpectClip(a, b, at);
            EXPECT_EQ(PathOf(written_, a.fileId), PathOf(read_, b.fileId)) << at;
        });
        ExpectAll(one.midiClips, other.midiClips, what, ExpectPlacement<orvo::MidiClip>);
    }

    void ExpectTrack(const orvo::VideoTrack& one, const orvo::VideoTrack& other) const {
        EXPECT_EQ(one.name, other.name);
        ExpectHue(one.hue, other.hue, one.name);
        ExpectAll(one.clips, other.clips, one.name,
                  [&](const auto& a, const auto& b, const auto& at) {
                      ExpectPlacement(a, b, at);
                      EXPECT_EQ(PathOf(written_, a.fileId), PathOf(read_, b.fileId)) << at;
                  });
    }

private:
    void ExpectSends(const AudioTrack& one, const AudioTrack& other) const {
        const auto expected = SendsOf(written_, one);
        const auto found = SendsOf(read_, other);
        ASSERT_EQ(expected.size(), found.size()) << one.name;
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_EQ(NameOf(written_, expected[i].sendOutputId),
                      NameOf(read_, found[i].sendOutputId));
            EXPECT_EQ(expected[i].preFader, found[i].preFader) << one.name;
            ExpectLevel(expected[i].sendComponent, found[i].sendComponent, one.name + ", send");
            ExpectLane(expected[i].panComponent, found[i].panComponent, one.name + ", send");
        }
    }

    const orvo::Session& written_;
    const orvo::Session& read_;
};

}  // namespace

void ExpectCarried(const orvo::Session& written, const orvo::Session& read) {
    const Comparison comparison(written, read);
    const auto expectAll = [&](const auto& one, const auto& other) {
        ASSERT_EQ(one.size(), other.size());
        for (std::size_t i = 0; i < one.size(); ++i) {
            comparison.ExpectTrack(*one[i], *other[i]);
        }
    };
    expectAll(TracksOf(written), TracksOf(read));
    expectAll(orvo::VideoTracksInOrder(written), orvo::VideoTracksInOrder(read));
    if (written.musicalTime.beatsPerMinute > 0) {
        EXPECT_EQ(written.musicalTime.beatsPerMinute, read.musicalTime.beatsPerMinute);
    }
    if (written.musicalTime.beatsPerBar > 0) {
        EXPECT_EQ(written.musicalTime.beatsPerBar, read.musicalTime.beatsPerBar);
        EXPECT_EQ(written.musicalTime.noteLength, read.musicalTime.noteLength);
    }
}

}  // namespace test
