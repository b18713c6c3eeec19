#include "tests/reference_host/support/Mirror.h"

#include <string>
#include <vector>

#include "host/AudioClips.h"
#include "host/AudioTracks.h"
#include "host/Automation.h"
#include "host/ClipGroups.h"
#include "host/ClipStretch.h"
#include "host/Effects.h"
#include "host/Fades.h"
#include "host/Files.h"
#include "host/GlobalTrackInfo.h"
#include "host/Metronome.h"
#include "host/MidiClips.h"
#include "host/Properties.h"
#include "host/Sends.h"
#include "host/TrackVisibility.h"
#include "host/VideoClips.h"
#include "host/VideoTracks.h"
#include "reference_host/HostString.h"
#include "reference_host/Ref.h"

namespace refhost::test {
namespace {

using kelcore::byte;
using kelcore::int32;
using kelcore::int64;
using kelcore::uint32;

template <class Interface>
Ref<Interface> Hold(Interface* object) {
    return Ref<Interface>::Retain(object);
}

/// Mirrors a part if it exists. `edit` asks the other side for its part, which makes it.
template <class Query, class Edit, class Copy>
void MirrorPart(Query* query, Edit edit, Copy copy) {
    if (const auto from = Hold(query)) {
        const auto to = Hold(edit());
        copy(*from, *to);
    }
}

template <class Size, class Get>
std::vector<byte> Block(Size size, Get get) {
    std::vector<byte> block(size());
    get(block.data());
    return block;
}

uint32 SizeOf(const std::vector<byte>& block) {
    return static_cast<uint32>(block.size());
}

void MirrorLane(tses::IQueryAutomationLane& from, tses::IEditAutomationLane& to) {
    to.SetEnableSplines(from.GetEnableSplines());
    to.SetReadOnly(from.IsReadOnly());
    for (uint32 i = 0; i < from.GetKeyframeCount(); ++i) {
        float value = 0;
        int64 offset = 0;
        bool hold = false;
        bool selected = false;
        from.GetKeyframe(i, value, offset, hold, selected);
        to.AddKeyframe(value, offset, hold, selected);
    }
}

void MirrorParameters(tses::IQueryComponent& from, tses::IEditComponent& to) {
    for (uint32 i = 0; i < from.GetParameterCount(); ++i) {
        float value = 0;
        if (!from.GetParameterValue(i, value)) {
            continue;
        }
        to.SetParameterValue(i, value);
        to.SetParameterName(i, TextOf(from.GetParameterName(i)).c_str());
        to.SetParameterSafeDuringWrite(i, from.IsParameterSafeDuringWrite(i));
        MirrorPart(
            from.GetParameterAutomation(i), [&] { return to.GetParameterAutomation(i); },
            MirrorLane);
    }
}

void MirrorComponent(tses::IQueryComponent& from, tses::IEditComponent& to) {
    to.SetComponentGuid(TextOf(from.GetComponentGuid()).c_str());
    to.SetComponentID(TextOf(from.GetComponentID()).c_str());
    to.SetName(TextOf(from.GetName()).c_str());
    if (const auto preset = Hold(from.GetPreset())) {
        to.SetPresetName(TextOf(preset->GetName()).c_str());
    }
    to.SetPowered(from.IsPowered());
    to.SetEditorVisible(from.IsEditorVisible());
    int32 left = 0;
    int32 top = 0;
    int32 width = 0;
    int32 height = 0;
    from.GetEditorRect(left, top, width, height);
    to.SetEditorRect(left, top, width, height);
    const auto chunk = Block([&] { return from.GetPresetChunkSize(); },
                             [&](byte* buffer) { return from.GetPresetChunk(buffer); });
    to.SetPresetChunk(chunk.data(), SizeOf(chunk));
    MirrorParameters(from, to);
}

void MirrorSlot(tses::IQueryEffectsSlot& from, tses::IEditEffectsSlot& to) {
    to.SetBypassed(from.IsBypassed());
    to.SetSideChainChannels(from.GetSideChainChannels());
    to.SetBusConfig(TextOf(from.GetBusConfig()).c_str());
    int32 index = 0;
    int32 source = 0;
    for (uint32 i = 0; i < from.GetInputChannelCount(); ++i) {
        from.GetInputChannel(i, index, source);
        to.AddInputChannel(index, source);
    }
    for (uint32 i = 0; i < from.GetOutputChannelCount(); ++i) {
        from.GetOutputChannel(i, index, source);
        to.AddOutputChannel(index, source);
    }
    MirrorPart(
        from.GetComponent(), [&] { return to.GetComponent(); }, MirrorComponent);
}

void MirrorRack(tses::IQueryEffectsRack& from, tses::IEditEffectsRack& to) {
    to.SetPreFader(from.IsPreFader());
    MirrorPart(
        from.GetMixComponent(), [&] { return to.GetMixComponent(); }, MirrorComponent);
    MirrorPart(
        from.GetInputComponent(), [&] { return to.GetInputComponent(); }, MirrorComponent);
    MirrorPart(
        from.GetOutputComponent(), [&] { return to.GetOutputComponent(); }, MirrorComponent);
    for (uint32 i = 0; i < from.GetSlotCount(); ++i) {
        if (const auto slot = Hold(from.GetSlot(i))) {
            const auto copy = Hold(to.AddSlot());
            copy->SetSlotIndex(from.GetSlotIndex(i));
            MirrorSlot(*slot, *copy);
        }
    }
}

void MirrorFade(tses::IQueryClipFade& from, tses::IEditClipFade& to) {
    to.SetStartPoint(from.GetStartPoint());
    to.SetEndPoint(from.GetEndPoint());
    to.SetType(from.GetType());
    to.SetShape(from.GetShape());
    to.SetCrossFadeLinkType(from.GetCrossFadeLinkType());
}

void MirrorStretch(tses::IQueryClipStretch& from, tses::IEditClipStretch& to) {
    to.SetStretchMode(from.GetStretchMode());
    to.SetStretchType(from.GetStretchType());
    to.SetStretchRatio(from.GetStretchRatio());
    to.SetPitchAdjustment(from.GetPitchAdjustment());
    to.SetStretchQuality(from.GetStretchQuality());
    to.SetTransientSensitivity(from.GetTransientSensitivity());
    to.SetAdaptiveWindowSize(from.GetAdaptiveWindowSize());
    to.SetPreserveFormants(from.GetPreserveFormants());
}

void MirrorClipProperties(tses::IQueryClipProperties& from, tses::IEditClipProperties& to) {
    if (!from.IsEmpty()) {
        to.SetProperties(TextOf(from.GetPropertiesText()).c_str());
    }
}

/// What clips and tracks have in common.
template <class Query, class Edit>
void MirrorEditParameters(Query& from, Edit& to) {
    for (uint32 i = 0; i < from.GetEditParameterCount(); ++i) {
        uint32 slotIndex = 0;
        uint32 parameterIndex = 0;
        from.GetEditParameter(i, slotIndex, parameterIndex);
        to.SetEditParameter(slotIndex, parameterIndex);
    }
}

/// What clips of all kinds have in common.
template <class Query, class Edit>
void MirrorPlacement(Query& from, Edit& to) {
    to.SetSourceInPoint(from.GetSourceInPoint());
    to.SetDuration(from.GetDuration());
    to.SetStartPoint(from.GetStartPoint());
    to.SetHue(from.GetHue());
    to.SetName(TextOf(from.GetName()).c_str());
    to.SetSelected(from.GetSelected());
    to.SetLockedInTime(from.GetLockedInTime());
}

void MirrorAudioClip(tses::IQueryAudioClip& from, tses::IEditAudioClip& to) {
    MirrorPlacement(from, to);
    to.SetFileID(from.GetFileID());
    to.SetLooped(from.GetLooped());
    to.SetOffline(from.GetOffline());
    to.SetZOrder(from.GetZOrder());
    to.SetClipAutoCrossfade(from.GetClipAutoCrossfade());
    to.SetCrossFadeHeadClipID(from.GetCrossFadeHeadClipID());
    to.SetCrossFadeTailClipID(from.GetCrossFadeTailClipID());
    MirrorPart(
        from.GetFadeIn(), [&] { return to.GetFadeIn(); }, MirrorFade);
    MirrorPart(
        from.GetFadeOut(), [&] { return to.GetFadeOut(); }, MirrorFade);
    MirrorPart(
        from.GetClipStretch(), [&] { return to.GetClipStretch(); }, MirrorStretch);
    for (uint32 i = 0; i < from.GetTakeCount(); ++i) {
        to.AddTake(from.GetTakeSourceInPoint(i));
    }
    MirrorEditParameters(from, to);
    MirrorPart(
        from.GetEffectsRack(), [&] { return to.GetEffectsRack(); }, MirrorRack);
    MirrorPart(
        from.GetClipGainComponent(), [&] { return to.GetClipGainComponent(); }, MirrorComponent);
    MirrorPart(
        from.GetClipMuteComponent(), [&] { return to.GetClipMuteComponent(); }, MirrorComponent);
    MirrorPart(
        from.GetClipPanComponent(), [&] { return to.GetClipPanComponent(); }, MirrorComponent);
    MirrorPart(
        from.GetProperties(), [&] { return to.GetProperties(); }, MirrorClipProperties);
    for (uint32 i = 0; i < from.GetChannelCount(); ++i) {
        to.SetChannelSource(i, from.GetChannelSource(i));
    }
}

void MirrorMidiClip(tses::IQueryMIDIClip& from, tses::IEditMIDIClip& to) {
    MirrorPlacement(from, to);
    const auto events = Block([&] { return from.GetMIDIEventsSize(); },
                              [&](byte* buffer) { return from.GetMIDIEvents(buffer); });
    to.SetMIDIEvents(events.data(), SizeOf(events));
}

void MirrorSends(tses::IQuerySendList& from, tses::IEditSendList& to) {
    for (uint32 i = 0; i < from.GetSlotCount(); ++i) {
        if (const auto slot = Hold(from.GetSlot(i))) {
            const auto copy = Hold(to.AddSlot());
            copy->SetSlotIndex(slot->GetSlotIndex());
            copy->SetSendOutputId(slot->GetSendOutputId());
            copy->SetPreFader(slot->IsPreFader());
            copy->SetDestCompIndex(slot->GetDestCompIndex());
            MirrorPart(
                slot->GetSendComponent(), [&] { return copy->GetSendComponent(u"sendComponent"); },
                MirrorComponent);
            MirrorPart(
                slot->GetPanComponent(), [&] { return copy->GetPanComponent(u"sendPan"); },
                MirrorComponent);
        }
    }
}

void MirrorInstrument(tses::IQueryInstrumentTrack& from, tses::IEditInstrumentTrack& to) {
    to.SetMidiIn(TextOf(from.GetMidiIn()).c_str());
    to.SetMidiAll(from.IsMidiAll());
}

void MirrorTrackClips(tses::IQueryAudioTrack& from, tses::IEditAudioTrack& to) {
    for (uint32 i = 0; i < from.GetClipCount(); ++i) {
        const auto clip = Hold(from.GetClip(i));
        const auto copy = Hold(to.CreateAudioClip(clip->GetID()));
        MirrorAudioClip(*clip, *copy);
    }
    // The lists are borrowed.
    tses::IQueryMIDIClipList& midiClips = *from.GetMIDIClipList();
    for (uint32 i = 0; i < midiClips.GetCount(); ++i) {
        const auto clip = Hold(midiClips.GetClip(i));
        const auto copy = Hold(to.GetMIDIClipList()->CreateMIDIClip(clip->GetID()));
        MirrorMidiClip(*clip, *copy);
    }
}

void MirrorTrackSwitches(tses::IQueryAudioTrackPrivate& from, tses::IEditAudioTrackPrivate& to) {
    to.SetIndex(from.GetIndex());
    to.SetKind(from.GetKind());
    to.SetSelected(from.IsSelected());
    to.SetHue(from.GetHue());
    to.SetMinimized(from.IsMinimized());
    to.SetName(TextOf(from.GetName()).c_str());
    to.SetHeight(from.GetHeight());
    to.SetPhaseInverted(from.IsPhaseInverted());
    to.SetPreRendered(from.IsPreRendered());
    to.SetSumToMono(from.IsSumToMono());
    to.SetPreRenderedFile(TextOf(from.GetPreRenderedFile()).c_str());
    to.SetAutomationLaneOpenState(from.IsAutomationLaneOpen());
    to.SetVisible(from.IsVisible());
    to.SetAudioChannelType(from.GetAudioChannelType());
    to.SetSolo(from.IsSolo());
    to.SetRecordArmed(from.IsRecordArmed());
    to.SetMonitoring(from.IsMonitoring());
    to.SetSoloSafe(from.IsSoloSafe());
    to.SetOutputTrack(from.GetOutputTrackId());
    to.SetInput(from.GetInputId());
    to.SetHardwareOutput(from.GetHardwareOutputId());
    to.SetAutomationMode(from.GetAutomationMode());
}

void MirrorAudioTrack(tses::IQueryAudioTrack& publicFrom, tses::IEditAudioTrack& publicTo) {
    auto& from = dynamic_cast<tses::IQueryAudioTrackPrivate&>(publicFrom);
    auto& to = dynamic_cast<tses::IEditAudioTrackPrivate&>(publicTo);
    MirrorTrackSwitches(from, to);
    MirrorPart(
        from.GetInstrument(), [&] { return to.GetInstrument(); }, MirrorInstrument);
    MirrorPart(
        from.GetFaderComponent(), [&] { return to.GetFaderComponent(u"trackFader"); },
        MirrorComponent);
    MirrorPart(
        from.GetMuteComponent(), [&] { return to.GetMuteComponent(u"trackMute"); },
        MirrorComponent);
    MirrorPart(
        from.GetPanComponent(), [&] { return to.GetPanComponent(u"trackPan"); }, MirrorComponent);
    MirrorPart(
        from.GetEQComponent(), [&] { return to.GetEQComponent(u"trackEQ"); }, MirrorComponent);
    MirrorPart(
        from.GetSendList(), [&] { return to.GetSendList(); }, MirrorSends);
    MirrorPart(
        from.GetEffectsRack(), [&] { return to.GetEffectsRack(); }, MirrorRack);
    MirrorEditParameters(from, to);
    MirrorTrackClips(from, to);
}

void MirrorVideoFormat(tses::IQueryVideoFormat& from, tses::IEditVideoFormat& to) {
    to.SetFrameTiming(from.GetTimeScale(), from.GetSampleSize());
    to.SetPixelType(from.GetPixelType());
    to.SetDimensions(from.GetWidth(), from.GetHeight());
    to.SetPixelAspectRatio(from.GetParNumerator(), from.GetParDenominator());
    to.SetFieldType(from.GetFieldType());
}

void MirrorVideoTrack(tses::IQueryVideoTrack& from, tses::IEditVideoTrack& to) {
    to.SetSelected(from.IsSelected());
    to.SetHue(from.GetHue());
    to.SetMinimized(from.IsMinimized());
    to.SetName(TextOf(from.GetName()).c_str());
    to.SetHeight(from.GetHeight());
    for (uint32 i = 0; i < from.GetVideoClipCount(); ++i) {
        const auto clip = Hold(from.GetVideoClip(i));
        const auto copy = Hold(to.CreateVideoClip(clip->GetID()));
        MirrorPlacement(*clip, *copy);
        copy->SetFileID(clip->GetFileID());
        copy->SetOffline(clip->GetOffline());
        copy->SetZOrder(clip->GetZOrder());
        MirrorPart(
            clip->GetVideoFormat(), [&] { return copy->GetVideoFormat(); }, MirrorVideoFormat);
    }
}

void MirrorPresets(tses::IQuerySession& from, tses::IEditSession& to) {
    for (uint32 i = 0; i < from.GetTrackVisibilityPresetCount(); ++i) {
        const auto preset = Hold(from.GetTrackVisibilityPreset(i));
        const auto copy = Hold(to.CreateTrackVisibilityPreset());
        copy->SetId(preset->GetId());
        copy->SetName(TextOf(preset->GetName()).c_str());
        for (uint32 track = 0; track < preset->GetTrackCount(); ++track) {
            uint32 trackId = 0;
            float height = 0;
            bool minimized = false;
            preset->GetTrack(track, trackId, height, minimized);
            copy->AddTrack(trackId, height, minimized);
        }
    }
}

void MirrorClipGroups(tses::IQuerySession& from, tses::IEditSession& to) {
    for (uint32 i = 0; i < from.GetClipGroupCount(); ++i) {
        const auto group = Hold(from.GetClipGroup(i));
        const auto copy = Hold(to.CreateClipGroup(group->GetID()));
        copy->SetName(TextOf(group->GetName()).c_str());
        copy->SetHue(group->GetHue());
        for (uint32 item = 0; item < group->GetItemCount(); ++item) {
            uint32 trackId = 0;
            uint32 clipId = 0;
            group->GetItem(item, trackId, clipId);
            copy->AddItem(trackId, clipId);
        }
    }
}

void MirrorGlobalTrackInfo(tses::IQueryGlobalTrackInfo& from, tses::IEditGlobalTrackInfo& to) {
    to.SetTimeSigVisible(from.GetTimeSigVisible());
    to.SetKeySigVisible(from.GetKeySigVisible());
    to.SetTempoVisible(from.GetTempoVisible());
    const auto tempo = Block([&] { return from.GetTempoEventsSize(); },
                             [&](byte* buffer) { return from.GetTempoEvents(buffer); });
    to.SetTempoEvents(tempo.data(), SizeOf(tempo));
    const auto timeSignature =
        Block([&] { return from.GetTimeSignatureEventsSize(); },
              [&](byte* buffer) { return from.GetTimeSignatureEvents(buffer); });
    to.SetTimeSignatureEvents(timeSignature.data(), SizeOf(timeSignature));
    const auto keySignature =
        Block([&] { return from.GetKeySignatureEventsSize(); },
              [&](byte* buffer) { return from.GetKeySignatureEvents(buffer); });
    to.SetKeySignatureEvents(keySignature.data(), SizeOf(keySignature));
}

void MirrorMetronome(tses::IQueryMetronomeInfo& publicFrom, tses::IEditMetronomeInfo& publicTo) {
    auto& from = dynamic_cast<tses::IQueryMetronomeInfoPrivate&>(publicFrom);
    auto& to = dynamic_cast<tses::IEditMetronomeInfoPrivate&>(publicTo);
    to.SetEnabled(from.IsEnabled());
    to.SetSoundSet(from.GetSoundSet());
    std::vector<uint32> pattern;
    for (uint32 i = 0; i < from.GetPatternLength(); ++i) {
        pattern.push_back(from.GetPatternBeat(i));
    }
    to.SetPattern(pattern.data(), static_cast<uint32>(pattern.size()));
    MirrorPart(
        from.GetMetronomeTrack(), [&] { return to.GetTrack(); }, MirrorAudioTrack);
    MirrorPart(
        from.GetGlobalTrackInfo(), [&] { return to.GetGlobalTrackInfo(); }, MirrorGlobalTrackInfo);
}

void MirrorEditorState(tses::IQuerySession& from, tses::IEditSession& to) {
    int64 first = 0;
    int64 second = 0;
    from.GetSelection(first, second);
    to.SetSelection(first, second);
    from.GetCtiPosition(first);
    to.SetCtiPosition(first);
    from.GetSmpteStart(first);
    to.SetSmpteStart(first);
    int32 numbers[4] = {};
    from.GetViewState(first, second, numbers[0], numbers[1]);
    to.SetViewState(first, second, numbers[0], numbers[1]);
    bool ntsc = false;
    bool dropFrame = false;
    from.GetTimeFormat(numbers[0], numbers[1], ntsc, dropFrame, numbers[2]);
    to.SetTimeFormat(numbers[0], numbers[1], ntsc, dropFrame, numbers[2]);
    to.SetLinkToDefaultTimeSettings(from.IsLinkedToDefaultTimeSettings());
    double real = 0;
    from.GetMusicalTime(real, numbers[0], numbers[1], numbers[2]);
    to.SetMusicalTime(real, numbers[0], numbers[1], numbers[2]);
    bool logarithmic = false;
    from.GetPanMode(logarithmic, real);
    to.SetPanMode(logarithmic, real);
    to.SetPlayOverlappingClips(from.IsPlayOverlappingClips());
}

void MirrorProperties(tses::IQueryProperties& from, tses::IEditProperties& to) {
    for (uint32 i = 0; i < from.GetCount(); ++i) {
        const std::u16string key = TextOf(from.GetKey(i));
        to.SetProperty(key.c_str(), TextOf(from.GetValue(key.c_str())).c_str());
    }
}

void MirrorFiles(tses::IQuerySession& from, tses::IEditSession& to) {
    for (uint32 i = 0; i < from.GetFileCount(); ++i) {
        const auto file = Hold(from.GetFile(i));
        const auto copy = Hold(to.GetFile(file->GetId()));
        copy->SetPath(TextOf(file->GetPath()).c_str());
        copy->SetRecoveryId(TextOf(file->GetRecoveryId()).c_str());
        copy->SetMediaHandler(TextOf(file->GetMediaHandler()).c_str());
        copy->SetImporterPrivateSettings(TextOf(file->GetImporterPrivateSettings()).c_str());
    }
}

void MirrorAudioDevice(tses::IQuerySession& from, tses::IEditSession& to) {
    to.SetInputDeviceId(TextOf(from.GetInputDeviceId()).c_str());
    to.SetOutputDeviceId(TextOf(from.GetOutputDeviceId()).c_str());
    for (uint32 i = 0; i < from.GetInputPortCount(); ++i) {
        to.AddInputPort(from.GetInputPortId(i), TextOf(from.GetInputPortName(i)).c_str());
    }
    for (uint32 i = 0; i < from.GetOutputPortCount(); ++i) {
        to.AddOutputPort(from.GetOutputPortId(i), TextOf(from.GetOutputPortName(i)).c_str());
    }
}

void MirrorTracks(tses::IQuerySession& from, tses::IEditSession& to) {
    for (uint32 i = 0; i < from.GetVideoTrackCount(); ++i) {
        const auto track = Hold(from.GetVideoTrack(i));
        MirrorVideoTrack(*track, *Hold(to.GetVideoTrack(track->GetId())));
    }
    for (uint32 i = 0; i < from.GetAudioTrackCount(); ++i) {
        const auto track = Hold(from.GetAudioTrack(i));
        if (auto* const whole = dynamic_cast<tses::IQueryAudioTrackPrivate*>(track.Get())) {
            MirrorAudioTrack(*whole, *Hold(to.GetAudioTrack(whole->GetId())));
        }
    }
}

}  // namespace

void Mirror(tses::IQuerySession& from, tses::IEditSession& to) {
    to.SetSampleRate(from.GetSampleRate());
    to.SetChannelCount(from.GetChannelCount());
    to.SetDuration(from.GetDuration());
    to.SetBitDepth(from.GetBitDepth());
    MirrorTracks(from, to);
    MirrorPresets(from, to);
    MirrorClipGroups(from, to);
    MirrorPart(
        from.GetMetronomeInfo(), [&] { return to.GetMetronomeInfo(); }, MirrorMetronome);
    MirrorEditorState(from, to);
    MirrorPart(
        from.GetProperties(), [&] { return to.GetProperties(); }, MirrorProperties);
    to.SetXmpMetadata(TextOf(from.GetXmpMetadata()).c_str());
    MirrorFiles(from, to);
    MirrorAudioDevice(from, to);
}

}  // namespace refhost::test
