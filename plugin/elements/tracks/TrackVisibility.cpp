#include "plugin/elements/tracks/Writers.h"

#include "format/tracks/TrackVisibility.h"
#include "host/TrackVisibility.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// Both directions go through a list of records. On reading, the host gets the presets when all of
// them have been read.

namespace tses {
namespace {

void Apply(const TrackVisibilityPreset& pending, IEditTrackVisibilityPreset& preset) {
    preset.SetId(pending.record.id);
    preset.SetName(pending.record.name.c_str());
    for (const TrackVisibilityRecord& track : pending.tracks) {
        preset.AddTrack(track.trackId, track.height, track.minimized);
    }
}

}  // namespace

void Serializer::Impl::StartTrackVisibilityPresets(State state,
                                                   const TagAttributes& /*attributes*/) {
    PushState(state);
    tracks_.visibilityPresets.clear();
}

void Serializer::Impl::StartTrackVisibilityPreset(State state, const TagAttributes& attributes) {
    PushState(state);
    ReadAttributes<kTrackVisibilityPresetRows>(attributes,
                                               tracks_.visibilityPresets.emplace_back().record);
}

void Serializer::Impl::StartTrackVisibility(State state, const TagAttributes& attributes) {
    PushState(state);
    if (!tracks_.visibilityPresets.empty()) {
        tracks_.visibilityPresets.back().tracks.push_back(
            ReadRecord<TrackVisibilityRecord, kTrackVisibilityRows>(attributes));
    }
}

void Serializer::Impl::EndTrackVisibilityPresets() {
    for (const TrackVisibilityPreset& pending : tracks_.visibilityPresets) {
        if (const auto preset = Retain(session_->CreateTrackVisibilityPreset())) {
            Apply(pending, *preset);
        }
    }
    tracks_.visibilityPresets.clear();
}

// Writing

namespace {

bool QueryPreset(SessionXMLWriter& writer, IQueryTrackVisibilityPreset& preset,
                 TrackVisibilityPreset& result) {
    result.record.id = preset.GetId();
    result.record.name = TextOf(preset.GetName());
    return ForEachItem(writer, preset.GetTrackCount(), [&](kelcore::uint32 index) {
        TrackVisibilityRecord& track = result.tracks.emplace_back();
        preset.GetTrack(index, track.trackId, track.height, track.minimized);
        return true;
    });
}

bool QueryPresets(SessionXMLWriter& writer, IQuerySession& session,
                  std::vector<TrackVisibilityPreset>& records) {
    return ForEachItem(writer, session.GetTrackVisibilityPresetCount(), [&](kelcore::uint32 index) {
        const auto preset = Retain(session.GetTrackVisibilityPreset(index));
        return !preset || QueryPreset(writer, *preset, records.emplace_back());
    });
}

bool WritePreset(SessionXMLWriter& writer, const TrackVisibilityPreset& preset) {
    if (!writer.StartElement(names::trackVisibilityPreset,
                             ToAttributes<kTrackVisibilityPresetRows>(preset.record))) {
        return false;
    }
    for (const TrackVisibilityRecord& track : preset.tracks) {
        if (!writer.StartElement(names::trackVisibility,
                                 ToAttributes<kTrackVisibilityRows>(track)) ||
            !writer.EndElement()) {
            return false;
        }
    }
    return writer.EndElement();
}

}  // namespace

bool WriteTrackVisibilityPresets(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    std::vector<TrackVisibilityPreset> presets;
    if (!QueryPresets(writer, *session, presets)) {
        return false;
    }
    if (presets.empty()) {
        return true;
    }
    if (!writer.StartElement(names::trackVisibilityPresets)) {
        return false;
    }
    for (const TrackVisibilityPreset& preset : presets) {
        if (!WritePreset(writer, preset)) {
            return false;
        }
    }
    return writer.EndElement();
}

}  // namespace tses
