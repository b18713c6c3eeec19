#include "reference_host/json/SessionJson.h"

#include <map>
#include <ostream>
#include <set>

#include "reference_host/json/Encode.h"
#include "reference_host/json/JsonReader.h"

namespace refhost {
namespace {

template <class Value>
std::string Dump(const Value& value) {
    return Encoded(value, JsonWriter::Layout::Indented, "\n");
}

template <HasSchema Struct>
std::vector<std::string> KeysOf() {
    return std::apply([](const auto&... rows) { return std::vector<std::string>{rows.key...}; },
                      Schema<Struct>::kRows);
}

/// A reader finds these things by their ids: those without one would end it, and of two with the
/// same it would make one.
template <class Thing>
void RequireOwnIds(const std::vector<Thing>& things, const std::string& list) {
    std::map<kelcore::uint32, std::size_t> places;
    for (std::size_t place = 0; place < things.size(); ++place) {
        const kelcore::uint32 id = things[place].id;
        const std::string where = "/" + list + "/" + std::to_string(place) + "/id: ";
        if (id == orvo::kNoId) {
            throw JsonError(where + std::to_string(id) +
                            " means none; give a number from 0 to 4294967294");
        }
        if (const auto [other, isNew] = places.try_emplace(id, place); !isNew) {
            throw JsonError(where + std::to_string(id) + " is the id of /" + list + "/" +
                            std::to_string(other->second) + " too; give each its own");
        }
    }
}

/// Names the keys of a type and of all that it is made of, each struct once.
class KeyList {
public:
    template <HasSchema Struct>
    void Add(const Struct&) {
        if (!structs_.insert(Schema<Struct>::kName).second) {
            return;
        }
        for (const std::string& key : KeysOf<Struct>()) {
            keys_.push_back(std::string(Schema<Struct>::kName) + "." + key);
        }
        const Struct value{};
        std::apply([&](const auto&... rows) { (Add(value.*rows.member), ...); },
                   Schema<Struct>::kRows);
    }
    template <class Element>
    void Add(const std::vector<Element>&) {
        Add(Element{});
    }
    template <class Held>
    void Add(const std::optional<Held>&) {
        Add(Held{});
    }
    template <class Held>
    void Add(const std::map<kelcore::uint32, Held>&) {
        Add(Held{});
    }
    void Add(const std::string&) {}
    template <class Number>
    requires std::is_arithmetic_v<Number> || std::is_enum_v<Number>
    void Add(Number) {}

    std::vector<std::string> Take() { return std::move(keys_); }

private:
    std::set<std::string> structs_;
    std::vector<std::string> keys_;
};

}  // namespace

void ToJson(const orvo::Session& session, const JsonSink& sink, const ByteProgress& progress) {
    WriteValue(session, JsonWriter::Layout::Indented, "\n", sink, progress);
}

std::string ToJson(const orvo::Session& session) {
    return Dump(session);
}

orvo::Session FromJson(const JsonSource& source, const ByteProgress& progress) {
    orvo::Session session;
    ReadDocument(source, progress, TargetOf(session));
    RequireOwnIds(session.files, "files");
    RequireOwnIds(session.videoTracks, "videoTracks");
    RequireOwnIds(session.audioTracks, "audioTracks");
    return session;
}

orvo::Session FromJson(std::string_view text) {
    return FromJson(TextSource(text));
}

std::vector<std::string> JsonKeys() {
    KeyList keys;
    keys.Add(orvo::Session{});
    return keys.Take();
}

}  // namespace refhost

namespace orvo {

using refhost::Dump;

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
