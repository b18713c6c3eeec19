#pragma once

#include "host/HostObject.h"

namespace tses {

struct IEditClipFade;
struct IQueryClipFade;
struct IEditClipStretch;
struct IQueryClipStretch;
struct IEditComponent;
struct IQueryComponent;
struct IEditEffectsRack;
struct IQueryEffectsRack;
struct IEditClipProperties;
struct IQueryClipProperties;

/// A region of a media file on a track. From `IEditAudioTrack::CreateAudioClip`.
struct IEditAudioClip : IHostObject {
    /// The id of the media file that is played.
    virtual void SetFileID(kelcore::uint32 fileId) = 0;
    /// The first sample of the region in the file. -1 if the file does not say.
    virtual void SetSourceInPoint(kelcore::int64 sample) = 0;
    /// Length of the region in samples.
    virtual void SetDuration(kelcore::int64 samples) = 0;
    /// Where the region starts on the timeline. -1 if the file does not say.
    virtual void SetStartPoint(kelcore::int64 sample) = 0;
    /// The colour's hue, the host's number. That of the previous clip if the file does not say.
    virtual void SetHue(double hue) = 0;
    /// Whether the region repeats.
    virtual void SetLooped(bool looped) = 0;
    /// The clip's name. That of the previous clip if the file does not say.
    virtual void SetName(const kelcore::char16* name) = 0;
    /// Whether the media is offline.
    virtual void SetOffline(bool offline) = 0;
    /// Whether the clip is selected.
    virtual void SetSelected(bool selected) = 0;
    /// The order among clips that overlap, the host's number.
    virtual void SetZOrder(kelcore::int32 order) = 0;
    /// Which channel of the file feeds a channel of the clip. Called in ascending order of
    /// `channel`, after everything else. A clip without such calls takes the file's channels as
    /// they are.
    virtual void SetChannelSource(kelcore::uint32 channel, kelcore::int32 source) = 0;
    /// Whether the clip may not be moved in time.
    virtual void SetLockedInTime(bool locked) = 0;
    /// The fade at the clip's start.
    virtual IEditClipFade* GetFadeIn() = 0;
    /// The fade at the clip's end.
    virtual IEditClipFade* GetFadeOut() = 0;
    /// How the clip is stretched in time.
    virtual IEditClipStretch* GetClipStretch() = 0;
    /// Whether the host makes crossfades where the clip overlaps others. True if the file does not
    /// say.
    virtual void SetClipAutoCrossfade(bool automatic) = 0;
    /// The clip that this one crossfades with at its start, or -1.
    virtual void SetCrossFadeHeadClipID(kelcore::int32 clipId) = 0;
    /// The clip that this one crossfades with at its end, or -1.
    virtual void SetCrossFadeTailClipID(kelcore::int32 clipId) = 0;
    /// One more take: its first sample in the file.
    virtual void AddTake(kelcore::int64 sourceInPoint) = 0;
    /// The component of the clip's gain.
    virtual IEditComponent* GetClipGainComponent() = 0;
    /// The component of the clip's mute.
    virtual IEditComponent* GetClipMuteComponent() = 0;
    /// The component of the clip's pan.
    virtual IEditComponent* GetClipPanComponent() = 0;
    /// The clip's effects.
    virtual IEditEffectsRack* GetEffectsRack() = 0;
    /// One more parameter that the editor shows for this clip. `slotIndex` is the effect's slot in
    /// the rack, `parameterIndex` the effect's parameter.
    virtual void SetEditParameter(kelcore::uint32 slotIndex, kelcore::uint32 parameterIndex) = 0;
    /// What the host keeps with the clip.
    virtual IEditClipProperties* GetProperties() = 0;

protected:
    ~IEditAudioClip() = default;
};

/// A region of a media file on a track. From `IQueryAudioTrack::GetClip`. Units are those of
/// `IEditAudioClip`.
struct IQueryAudioClip : IHostObject {
    /// The id, unique among the session's clips.
    virtual kelcore::uint32 GetID() = 0;
    /// The id of the media file that is played.
    virtual kelcore::uint32 GetFileID() = 0;
    /// The first sample of the region in the file.
    virtual kelcore::int64 GetSourceInPoint() = 0;
    /// Length of the region in samples.
    virtual kelcore::int64 GetDuration() = 0;
    /// Where the region starts on the timeline.
    virtual kelcore::int64 GetStartPoint() = 0;
    /// The colour's hue, the host's number.
    virtual double GetHue() = 0;
    /// Whether the region repeats.
    virtual bool GetLooped() = 0;
    /// The clip's name. Null: stored as empty.
    virtual IHostString* GetName() = 0;
    /// Whether the media is offline.
    virtual bool GetOffline() = 0;
    /// Whether the clip is selected.
    virtual bool GetSelected() = 0;
    /// The order among clips that overlap, the host's number.
    virtual kelcore::int32 GetZOrder() = 0;
    /// Whether the clip may not be moved in time.
    virtual bool GetLockedInTime() = 0;
    /// The fade at the clip's start.
    virtual IQueryClipFade* GetFadeIn() = 0;
    /// The fade at the clip's end.
    virtual IQueryClipFade* GetFadeOut() = 0;
    /// How the clip is stretched in time.
    virtual IQueryClipStretch* GetClipStretch() = 0;
    /// The clip that this one crossfades with at its start.
    virtual kelcore::int32 GetCrossFadeHeadClipID() = 0;
    /// The clip that this one crossfades with at its end.
    virtual kelcore::int32 GetCrossFadeTailClipID() = 0;
    /// Whether the host makes crossfades where the clip overlaps others.
    virtual bool GetClipAutoCrossfade() = 0;
    /// A take: its first sample in the file.
    virtual kelcore::int64 GetTakeSourceInPoint(kelcore::uint32 index) = 0;
    /// How many takes there are.
    virtual kelcore::uint32 GetTakeCount() = 0;
    /// How many parameters the editor shows for the clip.
    virtual kelcore::uint32 GetEditParameterCount() = 0;
    /// A parameter that the editor shows for the clip. `slotIndex` is 4294967295 and
    /// `parameterIndex` 0 before the call; if the slot index still is afterwards, the entry is
    /// skipped.
    virtual void GetEditParameter(kelcore::uint32 index, kelcore::uint32& slotIndex,
                                  kelcore::uint32& parameterIndex) = 0;
    /// The clip's effects.
    virtual IQueryEffectsRack* GetEffectsRack() = 0;
    /// The component of the clip's gain.
    virtual IQueryComponent* GetClipGainComponent() = 0;
    /// The component of the clip's mute.
    virtual IQueryComponent* GetClipMuteComponent() = 0;
    /// The component of the clip's pan.
    virtual IQueryComponent* GetClipPanComponent() = 0;
    /// What the host keeps with the clip.
    virtual IQueryClipProperties* GetProperties() = 0;
    /// One more than the highest channel of the clip that has a source. 0: no map is stored.
    virtual kelcore::uint32 GetChannelCount() = 0;
    /// The channel of the file that feeds a channel of the clip. Asked for every channel below the
    /// count in ascending order, even for one without a source; each answer is stored.
    virtual kelcore::int32 GetChannelSource(kelcore::uint32 channel) = 0;

protected:
    ~IQueryAudioClip() = default;
};

}  // namespace tses
