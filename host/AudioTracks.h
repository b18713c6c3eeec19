#pragma once

#include "host/HostObject.h"

namespace tses {

struct IEditAudioClip;
struct IQueryAudioClip;
struct IEditMIDIClipList;
struct IQueryMIDIClipList;
struct IEditComponent;
struct IQueryComponent;
struct IEditSendList;
struct IQuerySendList;
struct IEditEffectsRack;
struct IQueryEffectsRack;

/// What only instrument tracks have. From `IEditAudioTrackPrivate::GetInstrument`.
struct IEditInstrumentTrack : IHostObject {
    /// The MIDI input by name, or empty.
    virtual void SetMidiIn(const kelcore::char16* name) = 0;
    /// Whether all MIDI inputs are heard.
    virtual void SetMidiAll(bool all) = 0;

protected:
    ~IEditInstrumentTrack() = default;
};

/// What only instrument tracks have. From `IQueryAudioTrackPrivate::GetInstrument`.
struct IQueryInstrumentTrack : IHostObject {
    /// The MIDI input by name. Null or empty: not stored.
    virtual IHostString* GetMidiIn() = 0;
    /// Whether all MIDI inputs are heard.
    virtual bool IsMidiAll() = 0;

protected:
    ~IQueryInstrumentTrack() = default;
};

/// A track of the audio side: audio, bus, master, metronome or instrument.
struct IEditAudioTrack : IHostObject {
    /// A new audio clip on this track. Null: what the file says about the clip is dropped. Ids
    /// should be unique in a session, but they come as the file has them: possibly twice, and
    /// 4294967295 where the file has no id.
    virtual IEditAudioClip* CreateAudioClip(kelcore::uint32 id) = 0;
    /// The MIDI clips of an instrument track. Used during the call and not counted. Null: what the
    /// file says about MIDI clips is dropped.
    virtual IEditMIDIClipList* GetMIDIClipList() = 0;

protected:
    ~IEditAudioTrack() = default;
};

/// The rest of a track. Every track offers it: the plug-in casts `IEditAudioTrack` to it.
struct IEditAudioTrackPrivate : IEditAudioTrack {
    /// The track's place in the list of tracks, from 0.
    virtual void SetIndex(kelcore::uint32 index) = 0;
    /// A `TrackKind` (host/TrackKind.h).
    virtual void SetKind(kelcore::uint32 kind) = 0;
    /// Whether the track is selected.
    virtual void SetSelected(bool selected) = 0;
    /// The colour's hue, the host's number. -1 if the file does not say.
    virtual void SetHue(double hue) = 0;
    /// Whether the track is folded to its smallest height.
    virtual void SetMinimized(bool minimized) = 0;
    /// The track's name.
    virtual void SetName(const kelcore::char16* name) = 0;
    /// The track's height, the host's number. 0 if the file does not say.
    virtual void SetHeight(kelcore::int32 height) = 0;
    /// Whether the track's phase is inverted.
    virtual void SetPhaseInverted(bool inverted) = 0;
    /// Whether the pre-rendered file is played in place of the track's clips and effects.
    virtual void SetPreRendered(bool preRendered) = 0;
    /// Whether the track's channels are summed.
    virtual void SetSumToMono(bool sumToMono) = 0;
    /// The full path of the pre-rendered file. Called only when not empty.
    virtual void SetPreRenderedFile(const kelcore::char16* path) = 0;
    /// Whether the automation lanes are unfolded.
    virtual void SetAutomationLaneOpenState(bool open) = 0;
    /// Whether the track is shown. True if the file does not say.
    virtual void SetVisible(bool visible) = 0;
    /// What only instrument tracks have. Asked only of instrument tracks.
    virtual IEditInstrumentTrack* GetInstrument() = 0;
    /// The number of channels: 1 mono, 2 stereo, 6 for 5.1; 0 if the file does not say.
    virtual void SetAudioChannelType(kelcore::uint32 type) = 0;
    /// Whether the track is solo.
    virtual void SetSolo(bool solo) = 0;
    /// Whether the track records.
    virtual void SetRecordArmed(bool armed) = 0;
    /// Whether the track's input is heard.
    virtual void SetMonitoring(bool monitoring) = 0;
    /// Whether the track is heard while another one is solo.
    virtual void SetSoloSafe(bool soloSafe) = 0;
    /// The id of the track that this one feeds, or -1.
    virtual void SetOutputTrack(kelcore::int32 trackId) = 0;
    /// The id of the input port, or -1.
    virtual void SetInput(kelcore::int32 portId) = 0;
    /// The id of the output port, or -1.
    virtual void SetHardwareOutput(kelcore::int32 portId) = 0;
    /// The component of the fader. `id`: "trackFader".
    virtual IEditComponent* GetFaderComponent(const kelcore::char16* id) = 0;
    /// The component of the mute button. `id`: "trackMute".
    virtual IEditComponent* GetMuteComponent(const kelcore::char16* id) = 0;
    /// The component of the panner. `id`: "trackPan".
    virtual IEditComponent* GetPanComponent(const kelcore::char16* id) = 0;
    /// The component of the equaliser. `id`: "trackEQ".
    virtual IEditComponent* GetEQComponent(const kelcore::char16* id) = 0;
    /// The host's code of the automation mode. 1 if the file does not say.
    virtual void SetAutomationMode(kelcore::int32 mode) = 0;
    /// The track's sends.
    virtual IEditSendList* GetSendList() = 0;
    /// The track's effects.
    virtual IEditEffectsRack* GetEffectsRack() = 0;
    /// One more parameter that the editor shows for this track. `slotIndex` is the effect's slot in
    /// the rack, `parameterIndex` the effect's parameter.
    virtual void SetEditParameter(kelcore::uint32 slotIndex, kelcore::uint32 parameterIndex) = 0;

protected:
    ~IEditAudioTrackPrivate() = default;
};

/// A track of the audio side: audio, bus, master, metronome or instrument.
struct IQueryAudioTrack : IHostObject {
    /// How many audio clips there are.
    virtual kelcore::uint32 GetClipCount() = 0;
    /// An audio clip. Null: skipped.
    virtual IQueryAudioClip* GetClip(kelcore::uint32 index) = 0;
    /// The MIDI clips of an instrument track. Used during the call and not counted.
    virtual IQueryMIDIClipList* GetMIDIClipList() = 0;

protected:
    ~IQueryAudioTrack() = default;
};

/// The rest of a track. A track whose `IQueryAudioTrack` does not cast to it is not stored. Units
/// and codes are those of `IEditAudioTrackPrivate`.
struct IQueryAudioTrackPrivate : IQueryAudioTrack {
    /// The id, unique among the session's tracks of all kinds.
    virtual kelcore::uint32 GetId() = 0;
    /// The track's place in the list of tracks.
    virtual kelcore::uint32 GetIndex() = 0;
    /// A `TrackKind` (host/TrackKind.h); any other number is stored as an audio track.
    virtual kelcore::uint32 GetKind() = 0;
    /// Whether the track is selected.
    virtual bool IsSelected() = 0;
    /// The colour's hue, the host's number.
    virtual double GetHue() = 0;
    /// The track's name. Null: stored as empty.
    virtual IHostString* GetName() = 0;
    /// The track's height, the host's number.
    virtual kelcore::int32 GetHeight() = 0;
    /// Whether the track is folded to its smallest height.
    virtual bool IsMinimized() = 0;
    /// Whether the track's phase is inverted.
    virtual bool IsPhaseInverted() = 0;
    /// Whether the pre-rendered file is played in place of the track's clips and effects.
    virtual bool IsPreRendered() = 0;
    /// Whether the track's channels are summed.
    virtual bool IsSumToMono() = 0;
    /// The full path of the pre-rendered file. Null or empty: not stored.
    virtual IHostString* GetPreRenderedFile() = 0;
    /// The track's effects.
    virtual IQueryEffectsRack* GetEffectsRack() = 0;
    /// How many parameters the editor shows for the track.
    virtual kelcore::uint32 GetEditParameterCount() = 0;
    /// A parameter that the editor shows for the track. `slotIndex` is 4294967295 and
    /// `parameterIndex` 0 before the call; if the slot index still is afterwards, the entry is
    /// skipped.
    virtual void GetEditParameter(kelcore::uint32 index, kelcore::uint32& slotIndex,
                                  kelcore::uint32& parameterIndex) = 0;
    /// Whether the automation lanes are unfolded.
    virtual bool IsAutomationLaneOpen() = 0;
    /// The track's sends.
    virtual IQuerySendList* GetSendList() = 0;
    /// Whether the track is shown.
    virtual bool IsVisible() = 0;
    /// What only instrument tracks have. Asked only of instrument tracks.
    virtual IQueryInstrumentTrack* GetInstrument() = 0;
    /// The number of channels: 1 mono, 2 stereo, 6 for 5.1. A value other than 1, 2 and 6 is not
    /// stored.
    virtual kelcore::uint32 GetAudioChannelType() = 0;
    /// Whether the track is solo.
    virtual bool IsSolo() = 0;
    /// Whether the track records.
    virtual bool IsRecordArmed() = 0;
    /// Whether the track's input is heard.
    virtual bool IsMonitoring() = 0;
    /// Whether the track is heard while another one is solo.
    virtual bool IsSoloSafe() = 0;
    /// The id of the track that this one feeds. A value above 0 is stored as the track's output;
    /// otherwise the hardware output is.
    virtual kelcore::int32 GetOutputTrackId() = 0;
    /// The id of the input port.
    virtual kelcore::int32 GetInputId() = 0;
    /// The id of the output port.
    virtual kelcore::int32 GetHardwareOutputId() = 0;
    /// The component of the fader.
    virtual IQueryComponent* GetFaderComponent() = 0;
    /// The component of the mute button.
    virtual IQueryComponent* GetMuteComponent() = 0;
    /// The component of the panner.
    virtual IQueryComponent* GetPanComponent() = 0;
    /// The component of the equaliser.
    virtual IQueryComponent* GetEQComponent() = 0;
    /// The host's code of the automation mode.
    virtual kelcore::int32 GetAutomationMode() = 0;

protected:
    ~IQueryAudioTrackPrivate() = default;
};

}  // namespace tses
