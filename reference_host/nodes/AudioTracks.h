#pragma once

#include <orvo/AudioTrack.h>

#include "host/AudioTracks.h"
#include "host/TrackKind.h"
#include "reference_host/Node.h"
#include "reference_host/nodes/AudioClips.h"
#include "reference_host/nodes/Components.h"
#include "reference_host/nodes/EffectsRacks.h"
#include "reference_host/nodes/MidiClips.h"
#include "reference_host/nodes/Sends.h"

namespace refhost {

/// Whether a kind has one number for hosts and for the library.
constexpr bool AreOne(tses::TrackKind host, orvo::TrackKind model) {
    return static_cast<kelcore::uint32>(host) == static_cast<std::uint32_t>(model);
}
static_assert(AreOne(tses::TrackKind::Audio, orvo::TrackKind::Audio) &&
              AreOne(tses::TrackKind::Bus, orvo::TrackKind::Bus) &&
              AreOne(tses::TrackKind::Master, orvo::TrackKind::Master) &&
              AreOne(tses::TrackKind::Metronome, orvo::TrackKind::Metronome) &&
              AreOne(tses::TrackKind::Instrument, orvo::TrackKind::Instrument));

class EditInstrument final : public Face<tses::IEditInstrumentTrack, orvo::InstrumentTrack> {
public:
    using Face::Face;

    void SetMidiIn(const kelcore::char16* name) override {
        Value().midiIn = kelcore::UTF16to8(name);
    }
    void SetMidiAll(bool all) override { Value().midiAll = all; }
};

class QueryInstrument final : public Face<tses::IQueryInstrumentTrack, orvo::InstrumentTrack> {
public:
    using Face::Face;

    tses::IHostString* GetMidiIn() override { return GiveOut(Value().midiIn); }
    bool IsMidiAll() override { return Value().midiAll; }
};

using InstrumentNode = TwoFacedNode<orvo::InstrumentTrack, EditInstrument, QueryInstrument>;

/// The list of a track's MIDI clips, which its users do not count.
inline MidiClipListNode& MidiClipListOf(DataNode<orvo::AudioTrack>& track) {
    auto& list = track.PartNode<MidiClipListNode, &orvo::AudioTrack::midiClips>();
    list.StayWithParent();
    return list;
}

class EditAudioTrack final : public Face<tses::IEditAudioTrackPrivate, orvo::AudioTrack> {
public:
    using Face::Face;

    tses::IEditAudioClip* CreateAudioClip(kelcore::uint32 id) override {
        tses::IEditAudioClip* const clip = Appended<AudioClipNode, &orvo::AudioTrack::clips>();
        Value().clips.back().id = id;
        return clip;
    }
    tses::IEditMIDIClipList* GetMIDIClipList() override { return &MidiClipListOf(Owner()).Edit(); }
    void SetIndex(kelcore::uint32 index) override { Value().index = index; }
    void SetKind(kelcore::uint32 kind) override { Value().kind = orvo::TrackKind{kind}; }
    void SetSelected(bool selected) override { Value().selected = selected; }
    void SetHue(double hue) override { Value().hue = hue; }
    void SetMinimized(bool minimized) override { Value().minimized = minimized; }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
    void SetHeight(kelcore::int32 height) override { Value().height = height; }
    void SetPhaseInverted(bool inverted) override { Value().phaseInverted = inverted; }
    void SetPreRendered(bool preRendered) override { Value().preRendered = preRendered; }
    void SetSumToMono(bool sumToMono) override { Value().sumToMono = sumToMono; }
    void SetPreRenderedFile(const kelcore::char16* path) override {
        Value().preRenderedFile = kelcore::UTF16to8(path);
    }
    void SetAutomationLaneOpenState(bool open) override { Value().automationLaneOpen = open; }
    void SetVisible(bool visible) override { Value().visible = visible; }
    tses::IEditInstrumentTrack* GetInstrument() override {
        return Made<InstrumentNode, &orvo::AudioTrack::instrument>();
    }
    void SetAudioChannelType(kelcore::uint32 type) override {
        Value().audioChannelType = orvo::ChannelType{type};
    }
    void SetSolo(bool solo) override { Value().solo = solo; }
    void SetRecordArmed(bool armed) override { Value().recordArmed = armed; }
    void SetMonitoring(bool monitoring) override { Value().monitoring = monitoring; }
    void SetSoloSafe(bool soloSafe) override { Value().soloSafe = soloSafe; }
    void SetOutputTrack(kelcore::int32 trackId) override { Value().outputTrackId = trackId; }
    void SetInput(kelcore::int32 portId) override { Value().inputId = portId; }
    void SetHardwareOutput(kelcore::int32 portId) override { Value().hardwareOutputId = portId; }
    tses::IEditComponent* GetFaderComponent(const kelcore::char16* /*id*/) override {
        return Made<ComponentNode, &orvo::AudioTrack::fader>();
    }
    tses::IEditComponent* GetMuteComponent(const kelcore::char16* /*id*/) override {
        return Made<ComponentNode, &orvo::AudioTrack::mute>();
    }
    tses::IEditComponent* GetPanComponent(const kelcore::char16* /*id*/) override {
        return Made<ComponentNode, &orvo::AudioTrack::pan>();
    }
    tses::IEditComponent* GetEQComponent(const kelcore::char16* /*id*/) override {
        return Made<ComponentNode, &orvo::AudioTrack::eq>();
    }
    void SetAutomationMode(kelcore::int32 mode) override { Value().automationMode = mode; }
    tses::IEditSendList* GetSendList() override {
        return Made<SendListNode, &orvo::AudioTrack::sendList>();
    }
    tses::IEditEffectsRack* GetEffectsRack() override {
        return Made<RackNode, &orvo::AudioTrack::effectsRack>();
    }
    void SetEditParameter(kelcore::uint32 slotIndex, kelcore::uint32 parameterIndex) override {
        Value().editParameters.push_back({slotIndex, parameterIndex});
    }
};

/// What every query face of a track can report.
template <class Interface>
class QueryTrackClips : public Face<Interface, orvo::AudioTrack> {
public:
    using Face<Interface, orvo::AudioTrack>::Face;

    kelcore::uint32 GetClipCount() override { return CountOf(this->Value().clips); }
    tses::IQueryAudioClip* GetClip(kelcore::uint32 index) override {
        return this->template FoundAt<AudioClipNode, &orvo::AudioTrack::clips>(index);
    }
    tses::IQueryMIDIClipList* GetMIDIClipList() override {
        return &MidiClipListOf(this->Owner()).Query();
    }
};

/// A track that does not cast to the private interface.
class QueryClipsOnlyTrack final : public QueryTrackClips<tses::IQueryAudioTrack> {
public:
    using QueryTrackClips::QueryTrackClips;
};

class QueryAudioTrack final : public QueryTrackClips<tses::IQueryAudioTrackPrivate> {
public:
    using QueryTrackClips::QueryTrackClips;

    kelcore::uint32 GetId() override { return Value().id; }
    kelcore::uint32 GetIndex() override { return Value().index; }
    kelcore::uint32 GetKind() override { return NumberOf(Value().kind); }
    bool IsSelected() override { return Value().selected; }
    double GetHue() override { return Value().hue; }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    kelcore::int32 GetHeight() override { return Value().height; }
    bool IsMinimized() override { return Value().minimized; }
    bool IsPhaseInverted() override { return Value().phaseInverted; }
    bool IsPreRendered() override { return Value().preRendered; }
    bool IsSumToMono() override { return Value().sumToMono; }
    tses::IHostString* GetPreRenderedFile() override { return GiveOut(Value().preRenderedFile); }
    tses::IQueryEffectsRack* GetEffectsRack() override {
        return Found<RackNode, &orvo::AudioTrack::effectsRack>();
    }
    kelcore::uint32 GetEditParameterCount() override { return CountOf(Value().editParameters); }
    void GetEditParameter(kelcore::uint32 index, kelcore::uint32& slotIndex,
                          kelcore::uint32& parameterIndex) override {
        const orvo::EditParameter& parameter = Value().editParameters.at(index);
        slotIndex = parameter.slotIndex;
        parameterIndex = parameter.parameterIndex;
    }
    bool IsAutomationLaneOpen() override { return Value().automationLaneOpen; }
    tses::IQuerySendList* GetSendList() override {
        return Found<SendListNode, &orvo::AudioTrack::sendList>();
    }
    bool IsVisible() override { return Value().visible; }
    tses::IQueryInstrumentTrack* GetInstrument() override {
        return Found<InstrumentNode, &orvo::AudioTrack::instrument>();
    }
    kelcore::uint32 GetAudioChannelType() override { return NumberOf(Value().audioChannelType); }
    bool IsSolo() override { return Value().solo; }
    bool IsRecordArmed() override { return Value().recordArmed; }
    bool IsMonitoring() override { return Value().monitoring; }
    bool IsSoloSafe() override { return Value().soloSafe; }
    kelcore::int32 GetOutputTrackId() override { return Value().outputTrackId; }
    kelcore::int32 GetInputId() override { return Value().inputId; }
    kelcore::int32 GetHardwareOutputId() override { return Value().hardwareOutputId; }
    tses::IQueryComponent* GetFaderComponent() override {
        return Found<ComponentNode, &orvo::AudioTrack::fader>();
    }
    tses::IQueryComponent* GetMuteComponent() override {
        return Found<ComponentNode, &orvo::AudioTrack::mute>();
    }
    tses::IQueryComponent* GetPanComponent() override {
        return Found<ComponentNode, &orvo::AudioTrack::pan>();
    }
    tses::IQueryComponent* GetEQComponent() override {
        return Found<ComponentNode, &orvo::AudioTrack::eq>();
    }
    kelcore::int32 GetAutomationMode() override { return Value().automationMode; }
};

class AudioTrackNode final : public DataNode<orvo::AudioTrack> {
public:
    using DataNode::DataNode;

    EditAudioTrack& Edit() { return edit_; }
    tses::IQueryAudioTrack& Query() {
        if (Value().clipsOnly) {
            return clipsOnly_;
        }
        return query_;
    }

private:
    EditAudioTrack edit_{*this};
    QueryAudioTrack query_{*this};
    QueryClipsOnlyTrack clipsOnly_{*this};
};

}  // namespace refhost
