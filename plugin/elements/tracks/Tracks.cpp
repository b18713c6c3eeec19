#include "plugin/elements/tracks/Writers.h"

#include <stdexcept>

#include "format/tracks/Track.h"
#include "host/Metronome.h"
#include "plugin/elements/clips/Writers.h"
#include "plugin/elements/effects/EditParameter.h"
#include "plugin/elements/effects/Writers.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// The host owns or makes the tracks. Reading finds each by its id, except the metronome's, which
// belongs to the host's metronome.

namespace tses {
namespace {

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

HostReference<IEditAudioTrack> FindTrack(IEditSession& session, const PendingTrack& pending) {
    if (pending.kind != TrackKind::Metronome) {
        return Retain(session.GetAudioTrack(pending.track.id));
    }
    const auto metronome = Retain(session.GetMetronomeInfo());
    return metronome ? Retain(metronome->GetTrack()) : HostReference<IEditAudioTrack>();
}

void ApplyInstrument(const TrackRecord& record, IEditAudioTrackPrivate& track) {
    if (const auto instrument = Retain(track.GetInstrument())) {
        instrument->SetMidiIn(record.midiIn.c_str());
        instrument->SetMidiAll(record.midiAll);
    }
}

void Apply(TrackKind kind, const TrackRecord& record, IEditAudioTrackPrivate& track) {
    track.SetIndex(record.index);
    track.SetKind(static_cast<kelcore::uint32>(kind));
    track.SetSelected(record.select);
    track.SetAutomationLaneOpenState(record.automationLaneOpenState);
    track.SetVisible(record.visible);
    track.SetPhaseInverted(record.phaseInverted);
    track.SetPreRendered(record.preRendered);
    track.SetSumToMono(record.sumToMono);
    if (!record.preRenderedFile.empty()) {
        track.SetPreRenderedFile(record.preRenderedFile.c_str());
    }
    if (kind == TrackKind::Instrument) {
        ApplyInstrument(record, track);
    }
}

}  // namespace

void Serializer::Impl::StartTrack(State state, const TagAttributes& attributes) {
    PushState(state);
    PendingTrack& pending = tracks_.pending;
    pending = {};
    pending.kind = KindOf(state);
    ReadAttributes<kTrackIdRows, kTrackRows, kInstrumentRows>(attributes, pending.track);
    tracks_.track = FindTrack(*session_, pending).As<IEditAudioTrackPrivate>();
    if (!tracks_.track) {
        throw std::runtime_error("Invalid Track Id");
    }
    Apply(pending.kind, pending.track, *tracks_.track);
}

// Writing

namespace {

TrackRecord QueryTrack(IQueryAudioTrackPrivate& track) {
    TrackRecord record;
    record.id = track.GetId();
    record.index = track.GetIndex();
    record.select = track.IsSelected();
    record.automationLaneOpenState = track.IsAutomationLaneOpen();
    record.visible = track.IsVisible();
    record.phaseInverted = track.IsPhaseInverted();
    record.preRendered = track.IsPreRendered();
    record.sumToMono = track.IsSumToMono();
    record.preRenderedFile = TextOf(track.GetPreRenderedFile());
    return record;
}

void QueryInstrument(IQueryAudioTrackPrivate& track, TrackRecord& record) {
    if (const auto instrument = Retain(track.GetInstrument())) {
        record.midiAll = instrument->IsMidiAll();
        record.midiIn = TextOf(instrument->GetMidiIn());
    }
}

/// A kind without an element of its own is written as an audio track.
std::u16string_view ElementFor(TrackKind kind) {
    for (const KindRow& row : kKinds) {
        if (row.kind == kind) {
            return row.element;
        }
    }
    return names::audioTrack;
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
    TrackRecord record = QueryTrack(track);
    const auto kind = static_cast<TrackKind>(track.GetKind());
    if (kind == TrackKind::Instrument) {
        QueryInstrument(track, record);
    }
    return writer.StartElement(ElementFor(kind),
                               ToAttributes<kTrackIdRows, kTrackRows, kInstrumentRows>(record)) &&
           WriteTrackParameters(writer, track) && WriteTrackAudioParameters(writer, track) &&
           WriteEffectsRack(writer, Retain(track.GetEffectsRack())) &&
           WriteEditParameters(writer, track) && WriteSends(writer, track) &&
           WriteClips(writer, track, kind) && writer.EndElement();
}

// Tries every track, and only the last one decides the result: a failing track has always cost
// itself, not the session. Its element stays open, and what follows lands in it.
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
