#include "toolkit/interchange/Carried.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "session/Schema.h"
#include "session/json/Defaults.h"

namespace toolkit::interchange {
namespace {

template <class Value>
constexpr bool kIsList = false;
template <class Value>
constexpr bool kIsList<std::vector<Value>> = true;
template <>
constexpr bool kIsList<std::vector<std::uint8_t>> = false;  // one block

template <class Value>
std::size_t CountOf(const Value& value) {
    if constexpr (kIsList<Value>) {
        return value.size();
    }
    return 1;
}

/// A short text of a simple value; empty for any other.
template <class Value>
std::string TextOf(const Value& value) {
    if constexpr (std::is_same_v<Value, bool> || std::is_same_v<Value, std::string> ||
                  std::is_arithmetic_v<Value>) {
        constexpr std::size_t kLongest = 60;
        return fmt::format("{:.{}}", fmt::format("{}", value), kLongest);
    } else {
        return {};
    }
}

template <class Value>
bool ChangesNothing(const Value& value) {
    if constexpr (std::is_same_v<Value, std::optional<orvo::Component>>) {
        return !value || IsNeutral(*value);
    }
    return false;
}

class Walk {
public:
    Walk(const Carried& carried, Reporter& reporter) : carried_(carried), reporter_(reporter) {}

    template <class Struct>
    void Visit(const Struct& value) {
        // What becomes of the members is looked up once, not for each of a hundred thousand clips.
        const auto& usual = orvo::json::DefaultOf<Struct>();
        const auto& fates = FatesOf<Struct>();
        std::size_t number = 0;
        orvo::ForEachRow<Struct>([&](const auto& row) {
            VisitMember(row.key, value.*row.member, usual.*row.member, fates[number++]);
        });
    }

private:
    template <class Struct>
    const std::vector<Carried::Entry>& FatesOf() {
        std::vector<Carried::Entry>& fates = fates_[typeid(Struct)];
        if (fates.empty()) {
            orvo::ForEachRow<Struct>(
                [&](const auto& row) { fates.push_back(carried_.Of(row.member)); });
        }
        return fates;
    }

    template <class Member>
    void VisitMember(std::string_view key, const Member& value, const Member& usual,
                     const Carried::Entry& entry) {
        if (entry.fate == Carried::Fate::Handled) {
            return;
        }
        const std::size_t length = place_.size();
        place_ += '/';
        place_ += key;
        if (entry.fate == Carried::Fate::Within) {
            LookInto(value);
        } else if (value != usual && !ChangesNothing(value)) {
            if (entry.fate == Carried::Fate::ByNature) {
                reporter_.CountLost(entry.plural, CountOf(value));
            } else {
                reporter_.Add(orvo::Fidelity::Lost, place_, "the format has no place for it",
                              TextOf(value));
            }
        }
        place_.resize(length);
    }

    template <class Value>
    void LookInto(const Value& value) {
        if constexpr (orvo::HasSchema<Value>) {
            Visit(value);
        }
    }
    template <class Value>
    void LookInto(const std::optional<Value>& value) {
        if (value) {
            LookInto(*value);
        }
    }
    template <class Value>
    void LookInto(const std::vector<Value>& items) {
        const std::size_t length = place_.size();
        for (std::size_t i = 0; i < items.size(); ++i) {
            fmt::format_to(std::back_inserter(place_), "/{}", i);
            LookInto(items[i]);
            place_.resize(length);
        }
    }

    const Carried& carried_;
    Reporter& reporter_;
    std::map<std::type_index, std::vector<Carried::Entry>> fates_;
    std::string place_;
};

}  // namespace

Carried CarriedByAll() {
    using orvo::AudioClip;
    using orvo::AudioTrack;
    using orvo::MidiClip;
    using orvo::Session;
    using orvo::VideoClip;
    using orvo::VideoTrack;
    Carried carried;
    carried.LooksInto(&Session::audioTracks, &Session::videoTracks, &Session::files)
        .LooksInto(&AudioTrack::clips, &AudioTrack::midiClips)
        .LooksInto(&VideoTrack::clips)
        // About the file, not the session; the length follows from the clips.
        .Handles(&Session::formatVersion, &Session::formatDescription,
                 &Session::versionDependentValue, &Session::duration)
        .Handles(&AudioTrack::id)
        .Handles(&AudioClip::id)
        .Handles(&MidiClip::id)
        .Handles(&VideoTrack::id)
        .Handles(&VideoClip::id)
        .Handles(&orvo::File::id)
        .LacksByNature(&Session::ctiPosition, "positions of the current-time indicator")
        .LacksByNature(&Session::selection, "selections")
        .LacksByNature(&Session::viewState, "views")
        .LacksByNature(&Session::timeFormat, "time formats")
        .LacksByNature(&Session::trackVisibilityPresets, "choices of visible tracks")
        .LacksByNature(&Session::metronome, "metronomes")
        .LacksByNature(&Session::properties, "properties")
        .LacksByNature(&Session::audioDevice, "audio devices")
        .LacksByNature(&AudioTrack::height, "heights of tracks")
        .LacksByNature(&AudioTrack::selected, "selections")
        .LacksByNature(&AudioTrack::minimized, "views")
        .LacksByNature(&AudioTrack::visible, "views")
        .LacksByNature(&AudioTrack::automationLaneOpen, "views")
        .LacksByNature(&AudioTrack::preRendered, "pre-rendered tracks")
        .LacksByNature(&AudioTrack::preRenderedFile, "pre-rendered tracks")
        .LacksByNature(&AudioTrack::sumToMono, "sums to mono")
        .LacksByNature(&AudioTrack::recordArmed, "armed tracks")
        .LacksByNature(&AudioTrack::monitoring, "monitored tracks")
        .LacksByNature(&AudioTrack::soloSafe, "tracks safe from solo")
        .LacksByNature(&AudioTrack::inputId, "ports")
        .LacksByNature(&AudioTrack::hardwareOutputId, "ports")
        .LacksByNature(&AudioTrack::automationMode, "automation modes")
        .LacksByNature(&AudioTrack::editParameters, "parameters shown in the editor")
        .LacksByNature(&AudioTrack::instrument, "MIDI inputs")
        .LacksByNature(&AudioTrack::clipsOnly, "views")
        .LacksByNature(&AudioClip::selected, "selections")
        .LacksByNature(&AudioClip::takes, "takes")
        .LacksByNature(&AudioClip::effectsRack, "effect racks of clips")
        .LacksByNature(&AudioClip::editParameters, "parameters shown in the editor")
        .LacksByNature(&AudioClip::properties, "properties")
        .LacksByNature(&MidiClip::selected, "selections")
        .LacksByNature(&VideoTrack::height, "heights of tracks")
        .LacksByNature(&VideoTrack::selected, "selections")
        .LacksByNature(&VideoTrack::minimized, "views")
        .LacksByNature(&VideoClip::selected, "selections")
        .LacksByNature(&orvo::File::mediaHandler, "details of media files")
        .LacksByNature(&orvo::File::recoveryId, "details of media files")
        .LacksByNature(&orvo::File::importerPrivateSettings, "details of media files");
    return carried;
}

void ReportWhatIsNotCarried(const orvo::Session& session, const Carried& carried,
                            Reporter& reporter) {
    Walk(carried, reporter).Visit(session);
}

bool IsNeutral(const orvo::Component& control) {
    return control.presetChunk.empty() &&
           std::ranges::all_of(control.parameters, [](const auto& entry) {
               const auto& [number, parameter] = entry;
               const bool isLevel = number == 0 && parameter.value.value_or(0) == 0;
               return isLevel && !parameter.automation;
           });
}

}  // namespace toolkit::interchange
