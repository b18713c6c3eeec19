#pragma once

#include "host/HostObject.h"

namespace tses {

struct IHostLogTarget;
struct IEditFile;
struct IQueryFile;
struct IEditVideoTrack;
struct IQueryVideoTrack;
struct IEditAudioTrack;
struct IQueryAudioTrack;
struct IEditMetronomeInfo;
struct IQueryMetronomeInfo;
struct IEditTrackVisibilityPreset;
struct IQueryTrackVisibilityPreset;
struct IEditClipGroup;
struct IQueryClipGroup;
struct IEditProperties;
struct IQueryProperties;

/// A session under construction. Passed with selector 4; calls come as the reader meets the file's
/// elements. What the file does not contain causes no call.
struct IEditSession : IHostObject {
    virtual void UnusedSlot3() = 0;
    /// Where messages about the file go, even about one that cannot be opened. Null: only the trace
    /// says why a read failed, and reading goes on after an error that the parser can recover from.
    virtual IHostLogTarget* GetLogTarget() = 0;
    /// How many steps of the read are complete. `done` of `total`: 0 of 7 first, then up to 7 of 7.
    /// `reserved` and `flag` are always 0.
    virtual void SetProgress(kelcore::uint32 done, kelcore::uint32 total, kelcore::uint32 reserved,
                             kelcore::uint32 flag) = 0;
    /// A localised sentence that names the application version that wrote the file.
    virtual void SetFormatDescription(const kelcore::char16* description) = 0;
    /// Samples per second. 48000 if the file does not say.
    virtual void SetSampleRate(kelcore::uint32 samplesPerSecond) = 0;
    /// The number of channels: 1 (mono), 2 (stereo) or 6 (5.1). Not called if the file does not
    /// say.
    virtual void SetChannelCount(kelcore::int32 channels) = 0;
    /// Length in samples. 0 if the file does not say.
    virtual void SetDuration(kelcore::int64 samples) = 0;
    /// Bits per sample. 32 if the file does not say.
    virtual void SetBitDepth(kelcore::uint32 bits) = 0;
    /// The entry of the media file with this id, made if need be. Null: the file is left out.
    virtual IEditFile* GetFile(kelcore::uint32 id) = 0;
    /// The video track with this id, made if need be. Null: what the file says about the track is
    /// dropped.
    virtual IEditVideoTrack* GetVideoTrack(kelcore::uint32 id) = 0;
    /// The audio-side track with this id, made if need be. Null, or an object that does not cast to
    /// `IEditAudioTrackPrivate`: the read fails.
    virtual IEditAudioTrack* GetAudioTrack(kelcore::uint32 id) = 0;
    /// The metronome's settings. Null: what the file says about them is dropped, and the read fails
    /// if the file has a metronome track.
    virtual IEditMetronomeInfo* GetMetronomeInfo() = 0;
    /// A new, empty preset after the existing ones.
    virtual IEditTrackVisibilityPreset* CreateTrackVisibilityPreset() = 0;
    /// The identifier of the audio device for input; the host's own text, possibly empty.
    virtual void SetInputDeviceId(const kelcore::char16* deviceId) = 0;
    /// One more named input port. `id` is what tracks give as their input.
    virtual void AddInputPort(kelcore::int32 id, const kelcore::char16* name) = 0;
    /// The identifier of the audio device for output. As `SetInputDeviceId`.
    virtual void SetOutputDeviceId(const kelcore::char16* deviceId) = 0;
    /// One more named output port. `id` is what tracks give as their hardware output.
    virtual void AddOutputPort(kelcore::int32 id, const kelcore::char16* name) = 0;
    /// A new, empty clip group.
    virtual IEditClipGroup* CreateClipGroup(kelcore::uint32 id) = 0;
    /// The selected time range, in samples. Either may be negative, as the file has it.
    virtual void SetSelection(kelcore::int64 start, kelcore::int64 duration) = 0;
    /// The position of the current-time indicator, in samples.
    virtual void SetCtiPosition(kelcore::int64 position) = 0;
    /// The visible time range in samples; the width of the track controls and how far the tracks
    /// are scrolled down, the host's numbers.
    virtual void SetViewState(kelcore::int64 horizontalViewStart,
                              kelcore::int64 horizontalViewDuration,
                              kelcore::int32 trackControlsWidth,
                              kelcore::int32 verticalScrollOffset) = 0;
    /// How times are shown. `format`: 0 decimal, 1 samples, 2 timecode, 3 and 4 NTSC 30 non-drop
    /// and drop frame, 6 bars and beats, 12 and 13 NTSC 60 non-drop and drop frame, 14 NTSC 24.
    /// `frameRate`: frames per second. `customFrameRate`: the host's own.
    virtual void SetTimeFormat(kelcore::int32 format, kelcore::int32 frameRate, bool ntsc,
                               bool dropFrame, kelcore::int32 customFrameRate) = 0;
    /// The default pan law. `panPower`: the host's number; -3 if the file does not say.
    virtual void SetPanMode(bool logarithmic, double panPower) = 0;
    /// Whether the time format follows the application's preferences. True if the file does not
    /// say.
    virtual void SetLinkToDefaultTimeSettings(bool linked) = 0;
    /// The grid of bars and beats. `noteLength`: the beat's note, the host's number.
    /// `subdivisions`: of a beat. All are 0 if the file does not say.
    virtual void SetMusicalTime(double beatsPerMinute, kelcore::int32 beatsPerBar,
                                kelcore::int32 noteLength, kelcore::int32 subdivisions) = 0;
    /// The session's key/value properties.
    virtual IEditProperties* GetProperties() = 0;
    /// The XMP packet, without white space at its ends; possibly empty.
    virtual void SetXmpMetadata(const kelcore::char16* packet) = 0;
    /// A position whose meaning depends on the application version that wrote the file. Called at
    /// the session's end: the current-time position for version "4.0" exactly, the start of the
    /// selection for all others; 0 if the file has no such value.
    virtual void SetVersionDependentValue(kelcore::int64 position) = 0;
    /// The timecode of the session's first sample, in the host's unit.
    virtual void SetSmpteStart(kelcore::int64 start) = 0;
    /// Whether overlapping clips play. False if the file does not say.
    virtual void SetPlayOverlappingClips(bool play) = 0;

protected:
    ~IEditSession() = default;
};

/// A finished session. Passed with selector 5; must not change during the call.
struct IQuerySession : IHostObject {
    virtual void UnusedSlot3() = 0;
    /// Something that must outlive the write, or null. The plug-in holds a reference to it until
    /// the next call of `SessionInterface`.
    virtual IHostObject* GetContext() = 0;
    /// The format version for the document's root. The pointers are never null.
    virtual void GetFormatVersion(kelcore::int32* major, kelcore::int32* minor) = 0;
    /// How many steps of the write are over. `done` of `total`: 1 of 7 first, then 2, 3 and 4, even
    /// after a step that failed, unless the host throws, a text is too long, or memory runs out.
    /// `flag` is 0 at first, then 1 if the root's version could be set. Only the result tells
    /// whether the session was saved. `reserved` is always 0.
    virtual void SetProgress(kelcore::uint32 done, kelcore::uint32 total, kelcore::uint32 reserved,
                             kelcore::uint32 flag) = 0;
    /// Samples per second.
    virtual kelcore::uint32 GetSampleRate() = 0;
    /// The number of channels. 1 is stored as mono, 6 as 5.1, everything else as stereo.
    virtual kelcore::int32 GetChannelCount() = 0;
    /// Length in samples.
    virtual kelcore::int64 GetDuration() = 0;
    /// Bits per sample.
    virtual kelcore::uint32 GetBitDepth() = 0;
    /// How many media files there are.
    virtual kelcore::uint32 GetFileCount() = 0;
    /// A media file. Null: skipped.
    virtual IQueryFile* GetFile(kelcore::uint32 index) = 0;
    /// How many video tracks there are.
    virtual kelcore::uint32 GetVideoTrackCount() = 0;
    /// A video track.
    virtual IQueryVideoTrack* GetVideoTrack(kelcore::uint32 index) = 0;
    /// How many tracks of the audio side there are (audio, bus, master, instrument); the
    /// metronome's track is not among them.
    virtual kelcore::uint32 GetAudioTrackCount() = 0;
    /// A track of the audio side. Null, or an object that does not cast to
    /// `IQueryAudioTrackPrivate`: skipped.
    virtual IQueryAudioTrack* GetAudioTrack(kelcore::uint32 index) = 0;
    /// How many track visibility presets there are.
    virtual kelcore::uint32 GetTrackVisibilityPresetCount() = 0;
    /// A track visibility preset.
    virtual IQueryTrackVisibilityPreset* GetTrackVisibilityPreset(kelcore::uint32 index) = 0;
    /// The identifier of the audio device for input. Null: stored as empty.
    virtual IHostString* GetInputDeviceId() = 0;
    /// How many named input ports there are.
    virtual kelcore::uint32 GetInputPortCount() = 0;
    /// The number that tracks give as their input.
    virtual kelcore::int32 GetInputPortId(kelcore::uint32 index) = 0;
    /// The name of an input port. Null: stored as empty.
    virtual IHostString* GetInputPortName(kelcore::uint32 index) = 0;
    /// The identifier of the audio device for output. Null: stored as empty.
    virtual IHostString* GetOutputDeviceId() = 0;
    /// How many named output ports there are.
    virtual kelcore::uint32 GetOutputPortCount() = 0;
    /// The number that tracks give as their hardware output.
    virtual kelcore::int32 GetOutputPortId(kelcore::uint32 index) = 0;
    /// The name of an output port. Null: stored as empty.
    virtual IHostString* GetOutputPortName(kelcore::uint32 index) = 0;
    /// How many clip groups there are.
    virtual kelcore::uint32 GetClipGroupCount() = 0;
    /// A clip group.
    virtual IQueryClipGroup* GetClipGroup(kelcore::uint32 index) = 0;
    /// The metronome's settings. Must not be null: without them the write fails.
    virtual IQueryMetronomeInfo* GetMetronomeInfo() = 0;
    /// The selected time range, in samples. Like every output, these are 0 before the call (false;
    /// pan power: -3), and keep that value if the host leaves them alone.
    virtual void GetSelection(kelcore::int64& start, kelcore::int64& duration) = 0;
    /// The position of the current-time indicator, in samples.
    virtual void GetCtiPosition(kelcore::int64& position) = 0;
    /// The visible range and the layout of the tracks. As `IEditSession::SetViewState`.
    virtual void GetViewState(kelcore::int64& horizontalViewStart,
                              kelcore::int64& horizontalViewDuration,
                              kelcore::int32& trackControlsWidth,
                              kelcore::int32& verticalScrollOffset) = 0;
    /// How times are shown. As `IEditSession::SetTimeFormat`. A format that is not listed there is
    /// stored as its number, which reads back as 0.
    virtual void GetTimeFormat(kelcore::int32& format, kelcore::int32& frameRate, bool& ntsc,
                               bool& dropFrame, kelcore::int32& customFrameRate) = 0;
    /// The default pan law. As `IEditSession::SetPanMode`.
    virtual void GetPanMode(bool& logarithmic, double& panPower) = 0;
    /// Whether the time format follows the application's preferences.
    virtual bool IsLinkedToDefaultTimeSettings() = 0;
    /// The grid of bars and beats. As `IEditSession::SetMusicalTime`.
    virtual void GetMusicalTime(double& beatsPerMinute, kelcore::int32& beatsPerBar,
                                kelcore::int32& noteLength, kelcore::int32& subdivisions) = 0;
    /// The session's key/value properties.
    virtual IQueryProperties* GetProperties() = 0;
    /// The XMP packet. Null or empty: not stored.
    virtual IHostString* GetXmpMetadata() = 0;
    /// The timecode of the session's first sample, in the host's unit.
    virtual void GetSmpteStart(kelcore::int64& start) = 0;
    /// Whether overlapping clips play.
    virtual bool IsPlayOverlappingClips() = 0;

protected:
    ~IQuerySession() = default;
};

}  // namespace tses
