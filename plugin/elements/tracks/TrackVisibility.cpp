#include "plugin/elements/tracks/TrackVisibility.h"

#include "host/TrackVisibility.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// Presets of which tracks are shown how high:
//
//     <trackVisibilityPresets>
//       <trackVisibilityPreset id="1" name="Voices only">
//         <trackVisibility id="7" trackHeight="64" trackMinimized="true"/>
//       </trackVisibilityPreset>
//     </trackVisibilityPresets>
//
// Both directions go through a list of records: the host sees a preset when all of them have been
// read.

namespace tses {
namespace {

using Entry = PendingVisibilityPreset::Entry;

constexpr Binding<PendingVisibilityPreset> kPresetBindings[] = {
    {names::id, read::Number<&PendingVisibilityPreset::id>},
    {names::name, read::Text<&PendingVisibilityPreset::name>},
};

constexpr Binding<Entry> kEntryBindings[] = {
    {names::id, read::Number<&Entry::trackId>},
    {names::trackHeight, read::Number<&Entry::height>},
    {names::trackMinimized, read::StrictBool<&Entry::minimized>},
};

void Apply(const PendingVisibilityPreset& pending, IEditTrackVisibilityPreset& preset) {
    preset.SetId(pending.id);
    preset.SetName(pending.name.c_str());
    for (const Entry& entry : pending.entries) {
        preset.AddTrack(entry.trackId, entry.height, entry.minimized);
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
    ReadAttributes<kPresetBindings>(attributes, tracks_.visibilityPresets.emplace_back());
}

void Serializer::Impl::StartTrackVisibility(State state, const TagAttributes& attributes) {
    PushState(state);
    if (!tracks_.visibilityPresets.empty()) {
        ReadAttributes<kEntryBindings>(attributes,
                                       tracks_.visibilityPresets.back().entries.emplace_back());
    }
}

void Serializer::Impl::EndTrackVisibilityPresets() {
    for (const PendingVisibilityPreset& pending : tracks_.visibilityPresets) {
        if (const auto preset = Retain(session_->CreateTrackVisibilityPreset())) {
            Apply(pending, *preset);
        }
    }
    tracks_.visibilityPresets.clear();
}

// Writing

namespace {

bool QueryPreset(SessionXMLWriter& writer, IQueryTrackVisibilityPreset& preset,
                 PendingVisibilityPreset& record) {
    record.id = preset.GetId();
    record.name = TextOf(preset.GetName());
    return ForEachItem(writer, preset.GetTrackCount(), [&](kelcore::uint32 index) {
        Entry& entry = record.entries.emplace_back();
        preset.GetTrack(index, entry.trackId, entry.height, entry.minimized);
        return true;
    });
}

bool QueryPresets(SessionXMLWriter& writer, IQuerySession& session,
                  std::vector<PendingVisibilityPreset>& records) {
    return ForEachItem(writer, session.GetTrackVisibilityPresetCount(), [&](kelcore::uint32 index) {
        const auto preset = Retain(session.GetTrackVisibilityPreset(index));
        return !preset || QueryPreset(writer, *preset, records.emplace_back());
    });
}

AttributeMap ToAttributes(const PendingVisibilityPreset& preset) {
    AttributeMap attributes = {{names::id, FormatUnsigned(preset.id)}};
    attributes.SetUnlessEmpty(names::name, preset.name);
    return attributes;
}

AttributeMap ToAttributes(const Entry& entry) {
    AttributeMap attributes = {{names::id, FormatUnsigned(entry.trackId)},
                               {names::trackHeight, FormatFloat(entry.height)}};
    if (entry.minimized) {
        attributes.Set(names::trackMinimized, FormatBool(true));
    }
    return attributes;
}

bool WritePreset(SessionXMLWriter& writer, const PendingVisibilityPreset& preset) {
    if (!writer.StartElement(names::trackVisibilityPreset, ToAttributes(preset))) {
        return false;
    }
    for (const Entry& entry : preset.entries) {
        if (!writer.StartElement(names::trackVisibility, ToAttributes(entry)) ||
            !writer.EndElement()) {
            return false;
        }
    }
    return writer.EndElement();
}

}  // namespace

bool WriteTrackVisibilityPresets(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    std::vector<PendingVisibilityPreset> presets;
    if (!QueryPresets(writer, *session, presets)) {
        return false;
    }
    if (presets.empty()) {
        return true;
    }
    if (!writer.StartElement(names::trackVisibilityPresets)) {
        return false;
    }
    for (const PendingVisibilityPreset& preset : presets) {
        if (!WritePreset(writer, preset)) {
            return false;
        }
    }
    return writer.EndElement();
}

}  // namespace tses
