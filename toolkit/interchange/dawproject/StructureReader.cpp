#include "toolkit/interchange/dawproject/StructureReader.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "toolkit/interchange/HueColour.h"

namespace toolkit::interchange::dawproject {
namespace {

using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::TrackKind;

constexpr std::size_t kNoTrack = static_cast<std::size_t>(-1);

bool Contains(const pugi::xml_node& track, std::string_view contentType) {
    const std::string_view list = track.attribute("contentType").value();
    return list.find(contentType) != list.npos;
}

double HueOfElement(const pugi::xml_node& element) {
    const auto colour = Rgb::FromHex(element.attribute("color").value());
    return colour ? HueOf(*colour) : -1;
}

class StructureReader {
public:
    StructureReader(const ProjectDocument& document, const EntryReader& readEntry,
                    orvo::Session& session)
        : document_(document), readEntry_(readEntry), session_(session) {}

    Structure Read() {
        ReadAll(document_.Root().child("Structure"), kNoTrack, 0);
        for (const Connection& connection : connections_) {
            Connect(connection);
        }
        CutLoops();
        return std::move(structure_);
    }

private:
    /// A channel of an audio track, and the group that the track is in.
    struct Connection {
        std::size_t track = 0;
        pugi::xml_node channel{};
        std::size_t group = kNoTrack;
    };

    void ReadAll(const pugi::xml_node& parent, std::size_t group, int depth) {
        if (depth > kDeepest) {
            document_.Refuse(parent, "tracks are nested too deeply");
        }
        for (const pugi::xml_node& child : parent.children()) {
            if (IsNamed(child, "Track")) {
                ReadTrack(child, group, depth);
            } else if (IsNamed(child, "Channel") && depth == 0) {
                ReadAudioTrack(child, child, group);
            }
        }
    }

    void ReadTrack(const pugi::xml_node& track, std::size_t group, int depth) {
        document_.Job().Progress(0);
        const pugi::xml_node channel = track.child("Channel");
        const bool isGroup = !track.child("Track").empty() || Contains(track, "tracks");
        std::size_t own = group;
        if (channel.attribute("role").value() == std::string_view("vca")) {
            document_.Report(Fidelity::Lost, track, "sessions have no VCA tracks",
                             track.attribute("name").value());
        } else if (Contains(track, "video") && !Contains(track, "audio")) {
            ReadVideoTrack(track);
        } else if (!channel.empty() || !isGroup) {
            own = ReadAudioTrack(track, channel, group);
        } else {
            document_.Report(Fidelity::Lost, track, "the folder of tracks has no place",
                             track.attribute("name").value());
        }
        ReadAll(track, own, depth + 1);
    }

    void ReadVideoTrack(const pugi::xml_node& element) {
        Remember(element, {.isVideo = true, .number = session_.videoTracks.size()});
        session_.videoTracks.push_back(
            {.id = static_cast<std::uint32_t>(session_.videoTracks.size() + 1),
             .index = NextIndex(),
             .name = element.attribute("name").value(),
             .hue = HueOfElement(element)});
    }

    /// @param element  the track, or a channel without one
    std::size_t ReadAudioTrack(const pugi::xml_node& element, const pugi::xml_node& channel,
                               std::size_t group) {
        const std::size_t number = session_.audioTracks.size();
        Remember(element, {.number = number});
        Remember(channel, {.number = number});
        AudioTrack track = {.id = static_cast<std::uint32_t>(number + 1),
                            .index = NextIndex(),
                            .kind = KindOf(element, channel),
                            .name = element.attribute("name").value(),
                            .hue = HueOfElement(element)};
        ReadChannel(channel, track);
        if (track.kind == TrackKind::Instrument) {
            track.instrument.emplace();
        }
        session_.audioTracks.push_back(std::move(track));
        connections_.push_back({.track = number, .channel = channel, .group = group});
        return number;
    }

    TrackKind KindOf(const pugi::xml_node& element, const pugi::xml_node& channel) {
        const std::string_view role = channel.attribute("role").value();
        if (role == "master") {
            if (!hasMaster_) {
                hasMaster_ = true;
                return TrackKind::Master;
            }
            document_.Report(Fidelity::Approximated, element, "a second master became a bus");
            return TrackKind::Bus;
        }
        const bool isGroup = !element.child("Track").empty() || Contains(element, "tracks");
        if (role == "effect" || role == "submix" || isGroup || IsNamed(element, "Channel")) {
            return TrackKind::Bus;
        }
        return Contains(element, "notes") && !Contains(element, "audio") ? TrackKind::Instrument
                                                                         : TrackKind::Audio;
    }

    void ReadChannel(const pugi::xml_node& channel, AudioTrack& track) {
        track.fader = ReadControl(channel.child("Volume"), ValueKind::Level, 1);
        track.pan = ReadControl(channel.child("Pan"), ValueKind::Pan, 0.5);
        track.mute = ReadControl(channel.child("Mute"), ValueKind::Switch, 0);
        track.solo = IsTrue(channel, "solo", false);
        track.effectsRack =
            ReadDevices(document_, channel.child("Devices"), readEntry_, structure_.targets);
        const double channels = document_.Number(channel, "audioChannels").value_or(0);
        for (const auto type : {orvo::ChannelType::Mono, orvo::ChannelType::Stereo,
                                orvo::ChannelType::FivePointOne}) {
            if (channels == static_cast<double>(type)) {
                track.audioChannelType = type;
            }
        }
        if (channels != static_cast<double>(track.audioChannelType)) {
            document_.Report(Fidelity::Lost, channel, "tracks have 1, 2 or 6 channels",
                             channel.attribute("audioChannels").value());
        }
    }

    /// @param absent  the value of a control that says none
    std::optional<orvo::Component> ReadControl(const pugi::xml_node& element, ValueKind kind,
                                               double absent) {
        if (!element) {
            return std::nullopt;
        }
        ValueScale scale = ScaleOf(document_, element, kind);
        double value = absent;
        if (kind == ValueKind::Switch) {
            value = IsTrue(element, "value", false) ? 1 : 0;
        } else if (const pugi::xml_attribute said = element.attribute("value")) {
            const auto number = NumberOf(said.value());
            if (!number) {
                document_.Report(Fidelity::Lost, element, "the value is no number", said.value());
            }
            value = number.value_or(absent);
        }
        orvo::Component control;
        orvo::Parameter& parameter = control.parameters[0];
        parameter.value = scale.ValueOf(value);
        if (const pugi::xml_attribute id = element.attribute("id")) {
            structure_.targets.insert_or_assign(
                id.value(), Target{.parameter = &parameter, .scale = std::move(scale)});
        }
        return control;
    }

    // Connections

    void Connect(const Connection& connection) {
        AudioTrack& track = session_.audioTracks[connection.track];
        for (const pugi::xml_node& send : connection.channel.child("Sends").children("Send")) {
            ReadSend(send, track);
        }
        if (track.kind == TrackKind::Master) {
            return;
        }
        if (const std::size_t target = TargetOf(connection.channel); target != kNoTrack) {
            track.outputTrackId = IdOf(target);
        } else if (connection.group != kNoTrack) {
            track.outputTrackId = IdOf(connection.group);
        } else {
            const auto master =
                std::ranges::find(session_.audioTracks, TrackKind::Master, &AudioTrack::kind);
            track.outputTrackId = master != session_.audioTracks.end()
                                      ? static_cast<std::int32_t>(master->id)
                                      : orvo::kNone;
        }
    }

    void ReadSend(const pugi::xml_node& element, AudioTrack& track) {
        const std::size_t target = TargetOf(element);
        if (target == kNoTrack || track.kind == TrackKind::Master) {
            document_.Report(
                Fidelity::Lost, element,
                target == kNoTrack ? "the send leads to no track" : "a master has no sends");
            return;
        }
        if (!track.sendList) {
            track.sendList.emplace();
        }
        auto& slots = track.sendList->slots;
        orvo::SendSlot send = {
            .slotIndex = static_cast<std::uint32_t>(slots.size()),
            .sendOutputId = IdOf(target),
            .preFader = element.attribute("type").value() == std::string_view("pre"),
            .sendComponent = ReadControl(element.child("Volume"), ValueKind::Level, 1),
            .panComponent = ReadControl(element.child("Pan"), ValueKind::Pan, 0.5)};
        if (!IsTrue(element.child("Enable"), "value", true)) {
            Silence(element, send);
        }
        slots.emplace_back(std::move(send));
    }

    void Silence(const pugi::xml_node& element, orvo::SendSlot& send) {
        document_.Report(Fidelity::Approximated, element, "a send that is off became a silent one");
        if (!send.sendComponent) {
            send.sendComponent.emplace();
        }
        send.sendComponent->parameters[0].value =
            ValueScale{.kind = ValueKind::Level,
                       .levels = document_.Job().options.conventions.levels}
                .ValueOf(0);
    }

    /// The track to which a channel or send leads.
    std::size_t TargetOf(const pugi::xml_node& element) {
        const pugi::xml_attribute destination = element.attribute("destination");
        if (!destination) {
            return kNoTrack;
        }
        const auto found = structure_.tracks.find(destination.value());
        if (found == structure_.tracks.end() || found->second.isVideo) {
            document_.Report(Fidelity::Lost, element, "the destination is no track with sound",
                             destination.value());
            return kNoTrack;
        }
        return found->second.number;
    }

    /// Tracks whose outputs lead in a circle would never be heard.
    void CutLoops() {
        enum class Mark : char { New, OnPath, Done };
        std::vector<Mark> marks(session_.audioTracks.size(), Mark::New);
        for (std::size_t first = 0; first < marks.size(); ++first) {
            std::vector<std::size_t> path;
            std::size_t number = first;
            while (number != kNoTrack && marks[number] == Mark::New) {
                marks[number] = Mark::OnPath;
                path.push_back(number);
                number = NextOf(number);
            }
            if (number != kNoTrack && marks[number] == Mark::OnPath) {
                AudioTrack& last = session_.audioTracks[path.back()];
                document_.Report(Fidelity::Lost, document_.Root().child("Structure"),
                                 "an output leads in a circle", last.name);
                last.outputTrackId = orvo::kNone;
            }
            for (const std::size_t passed : path) {
                marks[passed] = Mark::Done;
            }
        }
    }

    /// The track that a track feeds. Ids are counted from 1.
    std::size_t NextOf(std::size_t number) const {
        const std::int32_t output = session_.audioTracks[number].outputTrackId;
        return output > 0 ? static_cast<std::size_t>(output - 1) : kNoTrack;
    }

    std::int32_t IdOf(std::size_t number) const {
        return static_cast<std::int32_t>(session_.audioTracks[number].id);
    }

    std::uint32_t NextIndex() const {
        return static_cast<std::uint32_t>(session_.videoTracks.size() +
                                          session_.audioTracks.size());
    }

    void Remember(const pugi::xml_node& element, TrackPlace place) {
        if (const pugi::xml_attribute id = element.attribute("id")) {
            structure_.tracks.try_emplace(id.value(), place);
        }
    }

    const ProjectDocument& document_;
    const EntryReader& readEntry_;
    orvo::Session& session_;
    Structure structure_;
    std::vector<Connection> connections_;
    bool hasMaster_ = false;
};

}  // namespace

Structure ReadStructure(const ProjectDocument& document, const EntryReader& readEntry,
                        orvo::Session& session) {
    return StructureReader(document, readEntry, session).Read();
}

}  // namespace toolkit::interchange::dawproject
