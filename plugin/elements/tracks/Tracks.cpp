#include "plugin/elements/tracks/Tracks.h"

#include <stdexcept>

#include "host/Metronome.h"
#include "plugin/elements/clips/AudioClips.h"
#include "plugin/elements/clips/MidiClips.h"
#include "plugin/elements/effects/EditParameter.h"
#include "plugin/elements/effects/EffectsRack.h"
#include "plugin/elements/tracks/Sends.h"
#include "plugin/elements/tracks/TrackAudioParameters.h"
#include "plugin/elements/tracks/TrackParameters.h"
#include "plugin/elements/tracks/VideoTracks.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// The tracks of a session:
//
//     <tracks>
//       <videoTrack/> ...
//       <audioTrack automationLaneOpenState="false" id="7" index="0" select="true" visible="true">
//       ...
//     </tracks>
//
// "audioTrack", "busTrack", "masterTrack" and "instrumentTrack" differ in name alone, and so does
// the "metronomeTrack" that stands inside "metronome". The host owns or makes the tracks; reading
// finds each by its id, but for the metronome's, which the host's metronome has.

namespace tses {
namespace {

constexpr kelcore::uint32 kNoSlot = 4294967295;

struct KindRow {
    TrackKind kind;
    State state;
    std::u16string_view element;
};
constexpr KindRow kKinds[] = {
    {TrackKind::Audio, states::audioTrack, names::audioTrack},
    {TrackKind::Bus, states::busTrack, names::busTrack},
    {TrackKind::Master, states::masterTrack, names::masterTrack},
    {TrackKind::Metronome, states::metronomeTrack, names::metronomeTrack},
    {TrackKind::Instrument, states::instrumentTrack, names::instrumentTrack},
};

// Reading

TrackKind KindOf(State state) {
    for (const KindRow& row : kKinds) {
        if (row.state == state) {
            return row.kind;
        }
    }
    return TrackKind::Audio;
}

constexpr Binding<PendingTrack> kBindings[] = {
    {names::automationLaneOpenState, read::StrictBool<&PendingTrack::automationLaneOpenState>},
    {names::id, read::Number<&PendingTrack::id>},
    {names::index, read::Number<&PendingTrack::index>},
    {names::midiAll, read::StrictBool<&PendingTrack::midiAll>},
    {names::midiIn, read::Text<&PendingTrack::midiIn>},
    {names::phaseInverted, read::StrictBool<&PendingTrack::phaseInverted>},
    {names::preRendered, read::StrictBool<&PendingTrack::preRendered>},
    {names::preRenderedFile, read::Text<&PendingTrack::preRenderedFile>},
    {names::select, read::StrictBool<&PendingTrack::select>},
    {names::sumtomono, read::StrictBool<&PendingTrack::sumToMono>},
    {names::visible, read::StrictBool<&PendingTrack::visible>},
};

HostReference<IEditAudioTrack> FindTrack(IEditSession& session, const PendingTrack& pending) {
    if (pending.kind != TrackKind::Metronome) {
        return Retain(session.GetAudioTrack(pending.id));
    }
    const auto metronome = Retain(session.GetMetronomeInfo());
    return metronome ? Retain(metronome->GetTrack()) : HostReference<IEditAudioTrack>();
}

void ApplyInstrument(const PendingTrack& pending, IEditAudioTrackPrivate& track) {
    if (const auto instrument = Retain(track.GetInstrument())) {
        instrument->SetMidiIn(pending.midiIn.c_str());
        instrument->SetMidiAll(pending.midiAll);
    }
}

void Apply(const PendingTrack& pending, IEditAudioTrackPrivate& track) {
    track.SetIndex(pending.index);
    track.SetKind(static_cast<kelcore::uint32>(pending.kind));
    track.SetSelected(pending.select);
    track.SetAutomationLaneOpenState(pending.automationLaneOpenState);
    track.SetVisible(pending.visible);
    track.SetPhaseInverted(pending.phaseInverted);
    track.SetPreRendered(pending.preRendered);
    track.SetSumToMono(pending.sumToMono);
    if (!pending.preRenderedFile.empty()) {
        track.SetPreRenderedFile(pending.preRenderedFile.c_str());
    }
    if (pending.kind == TrackKind::Instrument) {
        ApplyInstrument(pending, track);
    }
}

}  // namespace

void Serializer::Impl::StartTrack(State state, const TagAttributes& attributes) {
    PushState(state);
    tracks_.pending = {};
    tracks_.pending.kind = KindOf(state);
    ReadAttributes<kBindings>(attributes, tracks_.pending);
    tracks_.track = FindTrack(*session_, tracks_.pending).As<IEditAudioTrackPrivate>();
    if (!tracks_.track) {
        throw std::runtime_error("Invalid Track Id");
    }
    Apply(tracks_.pending, *tracks_.track);
}

// Writing

namespace {

/// What of a track is written: a kind that has no element of its own is an audio track's.
PendingTrack QueryTrack(IQueryAudioTrackPrivate& track) {
    PendingTrack record;
    record.id = track.GetId();
    record.index = track.GetIndex();
    record.select = track.IsSelected();
    record.automationLaneOpenState = track.IsAutomationLaneOpen();
    record.visible = track.IsVisible();
    record.phaseInverted = track.IsPhaseInverted();
    record.preRendered = track.IsPreRendered();
    record.sumToMono = track.IsSumToMono();
    record.preRenderedFile = TextOf(track.GetPreRenderedFile());
    record.kind = static_cast<TrackKind>(track.GetKind());
    if (record.kind == TrackKind::Instrument) {
        if (const auto instrument = Retain(track.GetInstrument())) {
            record.midiAll = instrument->IsMidiAll();
            record.midiIn = TextOf(instrument->GetMidiIn());
        }
    }
    return record;
}

void SetIfTrue(AttributeMap& attributes, std::u16string_view name, bool value) {
    if (value) {
        attributes.Set(name, FormatBool(true));
    }
}

AttributeMap ToAttributes(const PendingTrack& record) {
    AttributeMap attributes;
    attributes.Set(names::id, FormatUnsigned(record.id));
    attributes.Set(names::index, FormatUnsigned(record.index));
    attributes.Set(names::select, FormatBool(record.select));
    attributes.Set(names::automationLaneOpenState, FormatBool(record.automationLaneOpenState));
    attributes.Set(names::visible, FormatBool(record.visible));
    SetIfTrue(attributes, names::phaseInverted, record.phaseInverted);
    SetIfTrue(attributes, names::preRendered, record.preRendered);
    SetIfTrue(attributes, names::sumtomono, record.sumToMono);
    attributes.SetUnlessEmpty(names::preRenderedFile, record.preRenderedFile);
    SetIfTrue(attributes, names::midiAll, record.midiAll);
    attributes.SetUnlessEmpty(names::midiIn, record.midiIn);
    return attributes;
}

std::u16string_view ElementFor(TrackKind kind) {
    for (const KindRow& row : kKinds) {
        if (row.kind == kind) {
            return row.element;
        }
    }
    return names::audioTrack;
}

bool WriteEditParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    return ForEachItem(writer, track.GetEditParameterCount(), [&](kelcore::uint32 index) {
        kelcore::uint32 slotIndex = kNoSlot;
        kelcore::uint32 parameterIndex = 0;
        track.GetEditParameter(index, slotIndex, parameterIndex);
        return slotIndex == kNoSlot || WriteEditParameter(writer, slotIndex, parameterIndex);
    });
}

bool WriteRack(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    const auto rack = Retain(track.GetEffectsRack());
    return !rack || WriteEffectsRack(writer, *rack);
}

bool WriteSends(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    const auto sends = Retain(track.GetSendList());
    return !sends || WriteSendList(writer, *sends);
}

bool WriteClips(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track, TrackKind kind) {
    switch (kind) {
        case TrackKind::Master:
            return true;
        case TrackKind::Instrument:
            return WriteMidiClips(writer, track);
        default:
            return WriteAudioClips(writer, track);
    }
}

}  // namespace

bool WriteTrack(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track) {
    const PendingTrack record = QueryTrack(track);
    return writer.StartElement(ElementFor(record.kind), ToAttributes(record)) &&
           WriteTrackParameters(writer, track) && WriteTrackAudioParameters(writer, track) &&
           WriteRack(writer, track) && WriteEditParameters(writer, track) &&
           WriteSends(writer, track) && WriteClips(writer, track, record.kind) &&
           writer.EndElement();
}

// Every track is attempted, and the last one alone decides: a track that fails has always cost
// itself, not the session. Its element stays open then, and what follows lands in it.
bool WriteTracks(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    bool written = writer.StartElement(names::tracks);
    const bool walked =
        ForEachItem(writer, session->GetVideoTrackCount(),
                    [&](kelcore::uint32 index) {
                        if (const auto track = Retain(session->GetVideoTrack(index))) {
                            written = WriteVideoTrack(writer, *track);
                        }
                        return true;
                    }) &&
        ForEachItem(writer, session->GetAudioTrackCount(), [&](kelcore::uint32 index) {
            const auto track = Retain(session->GetAudioTrack(index));
            if (const auto whole = track.As<IQueryAudioTrackPrivate>()) {
                written = WriteTrack(writer, *whole);
            }
            return true;
        });
    return walked && written && writer.EndElement();
}

}  // namespace tses
