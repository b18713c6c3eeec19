#include <ostream>
#include <string>
#include <type_traits>

#include <orvo/Message.h>
#include <orvo/Session.h>
#include "session/Words.h"
#include "session/json/Encode.h"

// Values print as their JSON, enumerations as their words.

namespace orvo {
namespace {

template <class Value>
std::string Dump(const Value& value) {
    return json::Encoded(value, {}, "\n");
}

template <HasWords Code>
std::ostream& PrintCode(std::ostream& out, Code code) {
    const auto word = WordOf(code);
    return out << (word ? std::string(*word)
                        : std::to_string(static_cast<std::underlying_type_t<Code>>(code)));
}

}  // namespace

std::ostream& operator<<(std::ostream& out, FadeType type) {
    return PrintCode(out, type);
}
std::ostream& operator<<(std::ostream& out, CrossFadeLink link) {
    return PrintCode(out, link);
}
std::ostream& operator<<(std::ostream& out, StretchMode mode) {
    return PrintCode(out, mode);
}
std::ostream& operator<<(std::ostream& out, StretchType type) {
    return PrintCode(out, type);
}
std::ostream& operator<<(std::ostream& out, StretchQuality quality) {
    return PrintCode(out, quality);
}
std::ostream& operator<<(std::ostream& out, KeyframeType type) {
    return PrintCode(out, type);
}
std::ostream& operator<<(std::ostream& out, TrackKind kind) {
    return PrintCode(out, kind);
}
std::ostream& operator<<(std::ostream& out, ChannelType type) {
    return PrintCode(out, type);
}
std::ostream& operator<<(std::ostream& out, SoundSet soundSet) {
    return PrintCode(out, soundSet);
}
std::ostream& operator<<(std::ostream& out, Beat beat) {
    return PrintCode(out, beat);
}
std::ostream& operator<<(std::ostream& out, TimeDisplay display) {
    return PrintCode(out, display);
}
std::ostream& operator<<(std::ostream& out, Severity severity) {
    return PrintCode(out, severity);
}
std::ostream& operator<<(std::ostream& out, FeedTarget target) {
    return PrintCode(out, target);
}
std::ostream& operator<<(std::ostream& out, const Keyframe& keyframe) {
    return out << Dump(keyframe);
}
std::ostream& operator<<(std::ostream& out, const AutomationLane& lane) {
    return out << Dump(lane);
}
std::ostream& operator<<(std::ostream& out, const Parameter& parameter) {
    return out << Dump(parameter);
}
std::ostream& operator<<(std::ostream& out, const EditorRect& rect) {
    return out << Dump(rect);
}
std::ostream& operator<<(std::ostream& out, const Component& component) {
    return out << Dump(component);
}
std::ostream& operator<<(std::ostream& out, const ChannelRoute& route) {
    return out << Dump(route);
}
std::ostream& operator<<(std::ostream& out, const EffectsSlot& slot) {
    return out << Dump(slot);
}
std::ostream& operator<<(std::ostream& out, const EffectsRack& rack) {
    return out << Dump(rack);
}
std::ostream& operator<<(std::ostream& out, const EditParameter& parameter) {
    return out << Dump(parameter);
}
std::ostream& operator<<(std::ostream& out, const SendSlot& slot) {
    return out << Dump(slot);
}
std::ostream& operator<<(std::ostream& out, const SendList& list) {
    return out << Dump(list);
}
std::ostream& operator<<(std::ostream& out, const Fade& fade) {
    return out << Dump(fade);
}
std::ostream& operator<<(std::ostream& out, const ClipStretch& stretch) {
    return out << Dump(stretch);
}
std::ostream& operator<<(std::ostream& out, const AudioClip& clip) {
    return out << Dump(clip);
}
std::ostream& operator<<(std::ostream& out, const MidiClip& clip) {
    return out << Dump(clip);
}
std::ostream& operator<<(std::ostream& out, const InstrumentTrack& instrument) {
    return out << Dump(instrument);
}
std::ostream& operator<<(std::ostream& out, const AudioTrack& track) {
    return out << Dump(track);
}
std::ostream& operator<<(std::ostream& out, const VideoFormat& format) {
    return out << Dump(format);
}
std::ostream& operator<<(std::ostream& out, const VideoClip& clip) {
    return out << Dump(clip);
}
std::ostream& operator<<(std::ostream& out, const VideoTrack& track) {
    return out << Dump(track);
}
std::ostream& operator<<(std::ostream& out, const TrackVisibility& visibility) {
    return out << Dump(visibility);
}
std::ostream& operator<<(std::ostream& out, const TrackVisibilityPreset& preset) {
    return out << Dump(preset);
}
std::ostream& operator<<(std::ostream& out, const ClipGroupItem& item) {
    return out << Dump(item);
}
std::ostream& operator<<(std::ostream& out, const ClipGroup& group) {
    return out << Dump(group);
}
std::ostream& operator<<(std::ostream& out, const GlobalTrackInfo& info) {
    return out << Dump(info);
}
std::ostream& operator<<(std::ostream& out, const Metronome& metronome) {
    return out << Dump(metronome);
}
std::ostream& operator<<(std::ostream& out, const Selection& selection) {
    return out << Dump(selection);
}
std::ostream& operator<<(std::ostream& out, const ViewState& view) {
    return out << Dump(view);
}
std::ostream& operator<<(std::ostream& out, const TimeFormat& format) {
    return out << Dump(format);
}
std::ostream& operator<<(std::ostream& out, const MusicalTime& time) {
    return out << Dump(time);
}
std::ostream& operator<<(std::ostream& out, const MixingOptions& options) {
    return out << Dump(options);
}
std::ostream& operator<<(std::ostream& out, const Property& property) {
    return out << Dump(property);
}
std::ostream& operator<<(std::ostream& out, const File& file) {
    return out << Dump(file);
}
std::ostream& operator<<(std::ostream& out, const AudioPort& port) {
    return out << Dump(port);
}
std::ostream& operator<<(std::ostream& out, const AudioDevice& device) {
    return out << Dump(device);
}
std::ostream& operator<<(std::ostream& out, const FormatVersion& version) {
    return out << Dump(version);
}
std::ostream& operator<<(std::ostream& out, const Session& session) {
    return out << Dump(session);
}

}  // namespace orvo
