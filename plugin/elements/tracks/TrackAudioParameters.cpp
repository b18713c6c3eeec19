#include "plugin/elements/tracks/TrackAudioParameters.h"

#include "plugin/elements/effects/Component.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/Keywords.h"
#include "plugin/serializer/SerializerImpl.h"

// How a track sounds and where it goes:
//
//     <trackAudioParameters audioChannelType="stereo" automationMode="1" monitoring="false"
//                           recordArmed="false" solo="false" soloSafe="true">
//       <trackOutput outputID="2" type="trackID"/>
//       <trackInput inputID="1"/>
//       <component id="trackFader"/> <component id="trackMute"/>
//       <component id="trackPan"/> <component id="trackEQ"/>
//     </trackAudioParameters>
//
// Its switches are on for "true" and for "1", where a track's own are on for "true" alone. "volume"
// and "mute" of old files are accepted and dropped: the fader and mute components carry them.

namespace tses {
namespace {

constexpr std::u16string_view kFader = u"trackFader";
constexpr std::u16string_view kMute = u"trackMute";
constexpr std::u16string_view kPan = u"trackPan";
constexpr std::u16string_view kEq = u"trackEQ";

constexpr std::u16string_view kToTrack = u"trackID";
constexpr std::u16string_view kToHardware = u"hardwareOutput";

constexpr float kPoweredFrom = 0.5F;

// Reading

/// An unknown keyword changes nothing.
void ReadChannelType(std::u16string_view text, PendingTrack& record) {
    record.audioChannelType = FindValue(kChannelLayouts, text).value_or(record.audioChannelType);
}

constexpr Binding<PendingTrack> kBindings[] = {
    {names::audioChannelType, ReadChannelType},
    {names::automationMode, read::Number<&PendingTrack::automationMode>},
    {names::monitoring, read::LenientBool<&PendingTrack::monitoring>},
    {names::mute, read::LenientBool<&PendingTrack::mute>},
    {names::recordArmed, read::LenientBool<&PendingTrack::recordArmed>},
    {names::solo, read::LenientBool<&PendingTrack::solo>},
    {names::soloSafe, read::LenientBool<&PendingTrack::soloSafe>},
    {names::volume, read::LenientFloat<&PendingTrack::volume>},
};

void Apply(const PendingTrack& pending, IEditAudioTrackPrivate& track) {
    track.SetAudioChannelType(pending.audioChannelType);
    track.SetSolo(pending.solo);
    track.SetRecordArmed(pending.recordArmed);
    track.SetMonitoring(pending.monitoring);
    track.SetSoloSafe(pending.soloSafe);
    track.SetOutputTrack(pending.outputTrackId);
    track.SetInput(pending.inputId);
    track.SetHardwareOutput(pending.hardwareOutputId);
    track.SetAutomationMode(pending.automationMode);
}

struct ComponentRow {
    std::u16string_view keyword;
    IEditComponent* (IEditAudioTrackPrivate::*get)(const kelcore::char16* id);
};
constexpr ComponentRow kComponents[] = {
    {kFader, &IEditAudioTrackPrivate::GetFaderComponent},
    {kMute, &IEditAudioTrackPrivate::GetMuteComponent},
    {kPan, &IEditAudioTrackPrivate::GetPanComponent},
    {kEq, &IEditAudioTrackPrivate::GetEQComponent},
};

}  // namespace

void Serializer::Impl::StartTrackAudioParameters(State state, const TagAttributes& attributes) {
    PushState(state);
    ReadAttributes<kBindings>(attributes, tracks_.pending);
}

void Serializer::Impl::EndTrackAudioParameters() {
    if (tracks_.track) {
        Apply(tracks_.pending, *tracks_.track);
    }
}

/// The id goes to a track only for the one keyword, and to the hardware for any other or none.
void Serializer::Impl::StartTrackOutput(State state, const TagAttributes& attributes) {
    PushState(state);
    PendingTrack& pending = tracks_.pending;
    pending.outputTrackId = -1;
    pending.hardwareOutputId = -1;
    const auto type = attributes.Find(names::type);
    const auto id = attributes.Find(names::outputID);
    if (id) {
        const bool toTrack = type && *type == kToTrack;
        ParseSigned(*id, toTrack ? pending.outputTrackId : pending.hardwareOutputId);
    }
}

void Serializer::Impl::StartTrackInput(State state, const TagAttributes& attributes) {
    PushState(state);
    tracks_.pending.inputId = -1;
    if (const auto id = attributes.Find(names::inputID)) {
        ParseSigned(*id, tracks_.pending.inputId);
    }
}

void Serializer::Impl::StartTrackComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto id = attributes.Find(names::id);
    for (const ComponentRow& row : kComponents) {
        if (id && *id == row.keyword) {
            effects_.component = tracks_.track ? Retain(((*tracks_.track).*row.get)(id->data()))
                                               : HostReference<IEditComponent>();
            tracks_.pending.eqComponentPending = row.keyword == kEq;
        }
    }
    ApplyComponentAttributes(attributes);
}

/// Old files say whether the EQ is on by its last parameter alone.
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

PendingTrack QueryAudioParameters(IQueryAudioTrackPrivate& track) {
    PendingTrack record;
    record.audioChannelType = track.GetAudioChannelType();
    record.solo = track.IsSolo();
    record.recordArmed = track.IsRecordArmed();
    record.monitoring = track.IsMonitoring();
    record.soloSafe = track.IsSoloSafe();
    record.outputTrackId = track.GetOutputTrackId();
    record.inputId = track.GetInputId();
    record.hardwareOutputId = track.GetHardwareOutputId();
    record.automationMode = track.GetAutomationMode();
    return record;
}

AttributeMap ToAttributes(const PendingTrack& record) {
    AttributeMap attributes;
    attributes.SetUnlessEmpty(names::audioChannelType,
                              FindKeyword(kChannelLayouts, record.audioChannelType, u""));
    attributes.Set(names::solo, FormatBool(record.solo));
    attributes.Set(names::recordArmed, FormatBool(record.recordArmed));
    attributes.Set(names::monitoring, FormatBool(record.monitoring));
    attributes.Set(names::soloSafe, FormatBool(record.soloSafe));
    attributes.Set(names::automationMode, FormatSigned(record.automationMode));
    return attributes;
}

/// Only an id above 0 names a track; anything else is written as an output of the hardware.
AttributeMap OutputAttributes(const PendingTrack& record) {
    const bool toTrack = record.outputTrackId > 0;
    return {
        {names::type, std::u16string(toTrack ? kToTrack : kToHardware)},
        {names::outputID, FormatSigned(toTrack ? record.outputTrackId : record.hardwareOutputId)}};
}

bool WriteEmpty(SessionXMLWriter& writer, std::u16string_view element,
                const AttributeMap& attributes) {
    return writer.StartElement(element, attributes) && writer.EndElement();
}

bool WriteComponents(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    return WriteKeywordComponent(writer, kFader, Retain(track.GetFaderComponent())) &&
           WriteKeywordComponent(writer, kMute, Retain(track.GetMuteComponent())) &&
           WriteKeywordComponent(writer, kPan, Retain(track.GetPanComponent())) &&
           WriteKeywordComponent(writer, kEq, Retain(track.GetEQComponent()));
}

}  // namespace

bool WriteTrackAudioParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    const PendingTrack record = QueryAudioParameters(track);
    return writer.StartElement(names::trackAudioParameters, ToAttributes(record)) &&
           WriteEmpty(writer, names::trackOutput, OutputAttributes(record)) &&
           WriteEmpty(writer, names::trackInput,
                      {{names::inputID, FormatSigned(record.inputId)}}) &&
           WriteComponents(writer, track) && writer.EndElement();
}

}  // namespace tses
