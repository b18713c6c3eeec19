#include "plugin/elements/tracks/Writers.h"

#include "format/tracks/TrackAudioParameters.h"
#include "plugin/elements/effects/Component.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

constexpr float kPoweredFrom = 0.5F;
constexpr kelcore::int32 kNoOutput = TrackOutputRecord().id;

// Reading

void Apply(const PendingTrack& pending, IEditAudioTrackPrivate& track) {
    const TrackOutputRecord& output = pending.output;
    track.SetAudioChannelType(pending.audio.audioChannelType);
    track.SetSolo(pending.audio.solo);
    track.SetRecordArmed(pending.audio.recordArmed);
    track.SetMonitoring(pending.audio.monitoring);
    track.SetSoloSafe(pending.audio.soloSafe);
    track.SetOutputTrack(output.toTrack ? output.id : kNoOutput);
    track.SetInput(pending.input.id);
    track.SetHardwareOutput(output.toTrack ? kNoOutput : output.id);
    track.SetAutomationMode(pending.audio.automationMode);
}

struct ComponentRow {
    std::u16string_view keyword;
    IEditComponent* (IEditAudioTrackPrivate::*get)(const kelcore::char16* id);
};
constexpr ComponentRow kComponents[] = {
    {kTrackFader, &IEditAudioTrackPrivate::GetFaderComponent},
    {kTrackMute, &IEditAudioTrackPrivate::GetMuteComponent},
    {kTrackPan, &IEditAudioTrackPrivate::GetPanComponent},
    {kTrackEq, &IEditAudioTrackPrivate::GetEQComponent},
};

}  // namespace

void Serializer::Impl::StartTrackAudioParameters(State state, const TagAttributes& attributes) {
    PushState(state);
    ReadAttributes<kTrackAudioRows>(attributes, tracks_.pending.audio);
}

void Serializer::Impl::EndTrackAudioParameters() {
    if (tracks_.track) {
        Apply(tracks_.pending, *tracks_.track);
    }
}

void Serializer::Impl::StartTrackOutput(State state, const TagAttributes& attributes) {
    PushState(state);
    tracks_.pending.output = ReadRecord<TrackOutputRecord, kTrackOutputRows>(attributes);
}

void Serializer::Impl::StartTrackInput(State state, const TagAttributes& attributes) {
    PushState(state);
    tracks_.pending.input = ReadRecord<TrackInputRecord, kTrackInputRows>(attributes);
}

void Serializer::Impl::StartTrackComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadControl<kTrackComponents>(attributes);
    for (const ComponentRow& row : kComponents) {
        if (record.keyword == row.keyword) {
            effects_.component = tracks_.track
                                     ? Retain(((*tracks_.track).*row.get)(row.keyword.data()))
                                     : HostReference<IEditComponent>();
            tracks_.pending.eqComponentPending = row.keyword == kTrackEq;
        }
    }
    ApplyComponent(record);
}

/// In old files only the EQ's last parameter says whether the EQ is on.
void Serializer::Impl::EndTrackComponent() {
    if (tracks_.pending.eqComponentPending) {
        if (effects_.component && !effects_.poweredApplied && !effects_.parameterIndices.empty()) {
            effects_.component->SetPowered(effects_.parameterValue >= kPoweredFrom);
        }
        tracks_.pending.eqComponentPending = false;
    }
    EndComponent();
}

// Writing

namespace {

/// Only an id above 0 names a track; otherwise the hardware output is written.
TrackOutputRecord ChooseOutput(kelcore::int32 trackId, kelcore::int32 hardwareId) {
    const bool toTrack = trackId > 0;
    return {toTrack, toTrack ? trackId : hardwareId};
}

PendingTrack QueryAudioParameters(IQueryAudioTrackPrivate& track) {
    PendingTrack record;
    record.audio.audioChannelType = track.GetAudioChannelType();
    record.audio.solo = track.IsSolo();
    record.audio.recordArmed = track.IsRecordArmed();
    record.audio.monitoring = track.IsMonitoring();
    record.audio.soloSafe = track.IsSoloSafe();
    const kelcore::int32 outputTrackId = track.GetOutputTrackId();
    record.input.id = track.GetInputId();
    record.output = ChooseOutput(outputTrackId, track.GetHardwareOutputId());
    record.audio.automationMode = track.GetAutomationMode();
    return record;
}

bool WriteEmpty(SessionXMLWriter& writer, std::u16string_view element,
                const AttributeMap& attributes) {
    return writer.StartElement(element, attributes) && writer.EndElement();
}

bool WriteComponents(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    return WriteKeywordComponent(writer, kTrackFader, Retain(track.GetFaderComponent())) &&
           WriteKeywordComponent(writer, kTrackMute, Retain(track.GetMuteComponent())) &&
           WriteKeywordComponent(writer, kTrackPan, Retain(track.GetPanComponent())) &&
           WriteKeywordComponent(writer, kTrackEq, Retain(track.GetEQComponent()));
}

}  // namespace

bool WriteTrackAudioParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    const PendingTrack record = QueryAudioParameters(track);
    return writer.StartElement(names::trackAudioParameters,
                               ToAttributes<kTrackAudioRows>(record.audio)) &&
           WriteEmpty(writer, names::trackOutput, ToAttributes<kTrackOutputRows>(record.output)) &&
           WriteEmpty(writer, names::trackInput, ToAttributes<kTrackInputRows>(record.input)) &&
           WriteComponents(writer, track) && writer.EndElement();
}

}  // namespace tses
