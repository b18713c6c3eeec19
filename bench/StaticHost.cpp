#include "bench/StaticHost.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <type_traits>

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
#include "reference_host/Sessions.h"
#include "reference_host/recorder/Recorder.h"

namespace bench {
namespace {

using namespace kelcore;
using namespace tses;

/// Where in the tape the write is.
class Reel {
public:
    void Wind(const AnswerTape& recorded) {
        next_ = recorded.Entries().data();
        end_ = next_ + recorded.Entries().size();
    }
    bool IsAtEnd() const { return next_ == end_; }

    /// The next answers, as outputs.
    template <class... Values>
    void Take(Values&... values) {
        (Decode(Next(), values), ...);
    }

    /// The next answer, as the result, and those after it as outputs.
    template <class Result, class... Values>
    Result Number(Values&... values) {
        Result result{};
        Take(result, values...);
        return result;
    }

    IHostString* Text() { return reinterpret_cast<IHostString*>(Next()); }

    template <class Kind>
    Kind* Object(Kind& object) {
        return Next() != 0 ? &object : nullptr;
    }

    bool Bytes(byte* buffer) {
        const bool result = Number<bool>();
        const void* const block = reinterpret_cast<const void*>(Next());
        const uint64 size = Next();
        if (size > 0) {
            std::memcpy(buffer, block, size);
        }
        return result;
    }

private:
    AnswerTape::Entry Next() {
        if (next_ == end_) {
            std::fputs("the plug-in asks what it did not ask before\n", stderr);
            std::abort();
        }
        return *next_++;
    }

    template <class Value>
    static void Decode(AnswerTape::Entry entry, Value& value) {
        if constexpr (std::is_same_v<Value, double>) {
            value = std::bit_cast<double>(entry);
        } else if constexpr (std::is_same_v<Value, float>) {
            value = std::bit_cast<float>(static_cast<uint32>(entry));
        } else {
            value = static_cast<Value>(entry);
        }
    }

    const AnswerTape::Entry* next_ = nullptr;
    const AnswerTape::Entry* end_ = nullptr;
};

constinit Reel tape;

template <class Interface>
struct Static : Interface {
    void AddReference() override {}
    void Release() override {}

protected:
    ~Static() = default;
};

/// The one object of its kind.
template <class Object>
constinit Object the;

struct StaticContext final : Static<IHostObject> {};

struct StaticClipFade final : Static<IQueryClipFade> {
    int64 GetStartPoint() override { return tape.Number<int64>(); }
    int64 GetEndPoint() override { return tape.Number<int64>(); }
    uint32 GetType() override { return tape.Number<uint32>(); }
    int32 GetShape() override { return tape.Number<int32>(); }
    uint32 GetCrossFadeLinkType() override { return tape.Number<uint32>(); }
};

struct StaticClipStretch final : Static<IQueryClipStretch> {
    uint32 GetStretchMode() override { return tape.Number<uint32>(); }
    uint32 GetStretchType() override { return tape.Number<uint32>(); }
    double GetStretchRatio() override { return tape.Number<double>(); }
    double GetPitchAdjustment() override { return tape.Number<double>(); }
    uint32 GetStretchQuality() override { return tape.Number<uint32>(); }
    int32 GetTransientSensitivity() override { return tape.Number<int32>(); }
    int32 GetAdaptiveWindowSize() override { return tape.Number<int32>(); }
    bool GetPreserveFormants() override { return tape.Number<bool>(); }
};

struct StaticAutomationLane final : Static<IQueryAutomationLane> {
    uint32 GetKeyframeCount() override { return tape.Number<uint32>(); }
    bool GetEnableSplines() override { return tape.Number<bool>(); }
    void GetKeyframe(uint32, float& value, int64& sampleOffset, bool& hold,
                     bool& selected) override {
        tape.Take(value, sampleOffset, hold, selected);
    }
    bool IsReadOnly() override { return tape.Number<bool>(); }
};

struct StaticComponentPreset final : Static<IQueryComponentPreset> {
    IHostString* GetName() override { return tape.Text(); }
};

struct StaticComponent final : Static<IQueryComponent> {
    IHostString* GetComponentID() override { return tape.Text(); }
    IHostString* GetName() override { return tape.Text(); }
    uint32 GetParameterCount() override { return tape.Number<uint32>(); }
    bool GetParameterValue(uint32, float& value) override { return tape.Number<bool>(value); }
    IHostString* GetParameterName(uint32) override { return tape.Text(); }
    IQueryAutomationLane* GetParameterAutomation(uint32) override {
        return tape.Object(the<StaticAutomationLane>);
    }
    uint32 GetPresetChunkSize() override { return tape.Number<uint32>(); }
    bool GetPresetChunk(byte* buffer) override { return tape.Bytes(buffer); }
    bool IsEditorVisible() override { return tape.Number<bool>(); }
    void GetEditorRect(int32& left, int32& top, int32& width, int32& height) override {
        tape.Take(left, top, width, height);
    }
    bool IsPowered() override { return tape.Number<bool>(); }
    bool IsParameterSafeDuringWrite(uint32) override { return tape.Number<bool>(); }
    IHostString* GetComponentGuid() override { return tape.Text(); }
    IQueryComponentPreset* GetPreset() override { return tape.Object(the<StaticComponentPreset>); }
};

struct StaticEffectsSlot final : Static<IQueryEffectsSlot> {
    bool IsBypassed() override { return tape.Number<bool>(); }
    IQueryComponent* GetComponent() override { return tape.Object(the<StaticComponent>); }
    uint32 GetSideChainChannels() override { return tape.Number<uint32>(); }
    IHostString* GetBusConfig() override { return tape.Text(); }
    uint32 GetInputChannelCount() override { return tape.Number<uint32>(); }
    void GetInputChannel(uint32, int32& index, int32& source) override { tape.Take(index, source); }
    uint32 GetOutputChannelCount() override { return tape.Number<uint32>(); }
    void GetOutputChannel(uint32, int32& index, int32& source) override {
        tape.Take(index, source);
    }
};

struct StaticEffectsRack final : Static<IQueryEffectsRack> {
    IQueryComponent* GetMixComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetInputComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetOutputComponent() override { return tape.Object(the<StaticComponent>); }
    bool IsPreFader() override { return tape.Number<bool>(); }
    uint32 GetSlotCount() override { return tape.Number<uint32>(); }
    uint32 GetSlotIndex(uint32) override { return tape.Number<uint32>(); }
    IQueryEffectsSlot* GetSlot(uint32) override { return tape.Object(the<StaticEffectsSlot>); }
};

struct StaticClipProperties final : Static<IQueryClipProperties> {
    IHostString* GetPropertiesText() override { return tape.Text(); }
    bool IsEmpty() override { return tape.Number<bool>(); }
};

struct StaticAudioClip final : Static<IQueryAudioClip> {
    uint32 GetID() override { return tape.Number<uint32>(); }
    uint32 GetFileID() override { return tape.Number<uint32>(); }
    int64 GetSourceInPoint() override { return tape.Number<int64>(); }
    int64 GetDuration() override { return tape.Number<int64>(); }
    int64 GetStartPoint() override { return tape.Number<int64>(); }
    double GetHue() override { return tape.Number<double>(); }
    bool GetLooped() override { return tape.Number<bool>(); }
    IHostString* GetName() override { return tape.Text(); }
    bool GetOffline() override { return tape.Number<bool>(); }
    bool GetSelected() override { return tape.Number<bool>(); }
    int32 GetZOrder() override { return tape.Number<int32>(); }
    bool GetLockedInTime() override { return tape.Number<bool>(); }
    IQueryClipFade* GetFadeIn() override { return tape.Object(the<StaticClipFade>); }
    IQueryClipFade* GetFadeOut() override { return tape.Object(the<StaticClipFade>); }
    IQueryClipStretch* GetClipStretch() override { return tape.Object(the<StaticClipStretch>); }
    int32 GetCrossFadeHeadClipID() override { return tape.Number<int32>(); }
    int32 GetCrossFadeTailClipID() override { return tape.Number<int32>(); }
    bool GetClipAutoCrossfade() override { return tape.Number<bool>(); }
    int64 GetTakeSourceInPoint(uint32) override { return tape.Number<int64>(); }
    uint32 GetTakeCount() override { return tape.Number<uint32>(); }
    uint32 GetEditParameterCount() override { return tape.Number<uint32>(); }
    void GetEditParameter(uint32, uint32& slotIndex, uint32& parameterIndex) override {
        tape.Take(slotIndex, parameterIndex);
    }
    IQueryEffectsRack* GetEffectsRack() override { return tape.Object(the<StaticEffectsRack>); }
    IQueryComponent* GetClipGainComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetClipMuteComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetClipPanComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryClipProperties* GetProperties() override {
        return tape.Object(the<StaticClipProperties>);
    }
    uint32 GetChannelCount() override { return tape.Number<uint32>(); }
    int32 GetChannelSource(uint32) override { return tape.Number<int32>(); }
};

struct StaticInstrumentTrack final : Static<IQueryInstrumentTrack> {
    IHostString* GetMidiIn() override { return tape.Text(); }
    bool IsMidiAll() override { return tape.Number<bool>(); }
};

struct StaticMIDIClip final : Static<IQueryMIDIClip> {
    uint32 GetID() override { return tape.Number<uint32>(); }
    uint32 GetMIDIEventsSize() override { return tape.Number<uint32>(); }
    bool GetMIDIEvents(byte* buffer) override { return tape.Bytes(buffer); }
    int64 GetSourceInPoint() override { return tape.Number<int64>(); }
    int64 GetDuration() override { return tape.Number<int64>(); }
    int64 GetStartPoint() override { return tape.Number<int64>(); }
    double GetHue() override { return tape.Number<double>(); }
    IHostString* GetName() override { return tape.Text(); }
    bool GetSelected() override { return tape.Number<bool>(); }
    bool GetLockedInTime() override { return tape.Number<bool>(); }
};

struct StaticMIDIClipList final : Static<IQueryMIDIClipList> {
    uint32 GetCount() override { return tape.Number<uint32>(); }
    IQueryMIDIClip* GetClip(uint32) override { return tape.Object(the<StaticMIDIClip>); }
};

struct StaticSendSlot final : Static<IQuerySendSlot> {
    uint32 GetSlotIndex() override { return tape.Number<uint32>(); }
    int32 GetSendOutputId() override { return tape.Number<int32>(); }
    bool IsPreFader() override { return tape.Number<bool>(); }
    IQueryComponent* GetSendComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetPanComponent() override { return tape.Object(the<StaticComponent>); }
    int32 GetDestCompIndex() override { return tape.Number<int32>(); }
};

struct StaticSendList final : Static<IQuerySendList> {
    uint32 GetSlotCount() override { return tape.Number<uint32>(); }
    IQuerySendSlot* GetSlot(uint32) override { return tape.Object(the<StaticSendSlot>); }
};

struct StaticAudioTrack final : Static<IQueryAudioTrackPrivate> {
    uint32 GetClipCount() override { return tape.Number<uint32>(); }
    IQueryAudioClip* GetClip(uint32) override { return tape.Object(the<StaticAudioClip>); }
    IQueryMIDIClipList* GetMIDIClipList() override { return tape.Object(the<StaticMIDIClipList>); }
    uint32 GetId() override { return tape.Number<uint32>(); }
    uint32 GetIndex() override { return tape.Number<uint32>(); }
    uint32 GetKind() override { return tape.Number<uint32>(); }
    bool IsSelected() override { return tape.Number<bool>(); }
    double GetHue() override { return tape.Number<double>(); }
    IHostString* GetName() override { return tape.Text(); }
    int32 GetHeight() override { return tape.Number<int32>(); }
    bool IsMinimized() override { return tape.Number<bool>(); }
    bool IsPhaseInverted() override { return tape.Number<bool>(); }
    bool IsPreRendered() override { return tape.Number<bool>(); }
    bool IsSumToMono() override { return tape.Number<bool>(); }
    IHostString* GetPreRenderedFile() override { return tape.Text(); }
    IQueryEffectsRack* GetEffectsRack() override { return tape.Object(the<StaticEffectsRack>); }
    uint32 GetEditParameterCount() override { return tape.Number<uint32>(); }
    void GetEditParameter(uint32, uint32& slotIndex, uint32& parameterIndex) override {
        tape.Take(slotIndex, parameterIndex);
    }
    bool IsAutomationLaneOpen() override { return tape.Number<bool>(); }
    IQuerySendList* GetSendList() override { return tape.Object(the<StaticSendList>); }
    bool IsVisible() override { return tape.Number<bool>(); }
    IQueryInstrumentTrack* GetInstrument() override {
        return tape.Object(the<StaticInstrumentTrack>);
    }
    uint32 GetAudioChannelType() override { return tape.Number<uint32>(); }
    bool IsSolo() override { return tape.Number<bool>(); }
    bool IsRecordArmed() override { return tape.Number<bool>(); }
    bool IsMonitoring() override { return tape.Number<bool>(); }
    bool IsSoloSafe() override { return tape.Number<bool>(); }
    int32 GetOutputTrackId() override { return tape.Number<int32>(); }
    int32 GetInputId() override { return tape.Number<int32>(); }
    int32 GetHardwareOutputId() override { return tape.Number<int32>(); }
    IQueryComponent* GetFaderComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetMuteComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetPanComponent() override { return tape.Object(the<StaticComponent>); }
    IQueryComponent* GetEQComponent() override { return tape.Object(the<StaticComponent>); }
    int32 GetAutomationMode() override { return tape.Number<int32>(); }
};

struct StaticClipGroup final : Static<IQueryClipGroup> {
    uint32 GetItemCount() override { return tape.Number<uint32>(); }
    void GetItem(uint32, uint32& trackId, uint32& clipId) override { tape.Take(trackId, clipId); }
    IHostString* GetName() override { return tape.Text(); }
    double GetHue() override { return tape.Number<double>(); }
    uint32 GetID() override { return tape.Number<uint32>(); }
};

struct StaticFile final : Static<IQueryFile> {
    uint32 GetId() override { return tape.Number<uint32>(); }
    IHostString* GetPath() override { return tape.Text(); }
    IHostString* GetRecoveryId() override { return tape.Text(); }
    IHostString* GetMediaHandler() override { return tape.Text(); }
    IHostString* GetImporterPrivateSettings() override { return tape.Text(); }
};

struct StaticGlobalTrackInfo final : Static<IQueryGlobalTrackInfo> {
    bool GetTimeSigVisible() override { return tape.Number<bool>(); }
    bool GetKeySigVisible() override { return tape.Number<bool>(); }
    bool GetTempoVisible() override { return tape.Number<bool>(); }
    uint32 GetTempoEventsSize() override { return tape.Number<uint32>(); }
    bool GetTempoEvents(byte* buffer) override { return tape.Bytes(buffer); }
    uint32 GetTimeSignatureEventsSize() override { return tape.Number<uint32>(); }
    bool GetTimeSignatureEvents(byte* buffer) override { return tape.Bytes(buffer); }
    uint32 GetKeySignatureEventsSize() override { return tape.Number<uint32>(); }
    bool GetKeySignatureEvents(byte* buffer) override { return tape.Bytes(buffer); }
};

struct StaticMetronomeInfo final : Static<IQueryMetronomeInfoPrivate> {
    bool IsEnabled() override { return tape.Number<bool>(); }
    uint32 GetSoundSet() override { return tape.Number<uint32>(); }
    uint32 GetPatternLength() override { return tape.Number<uint32>(); }
    uint32 GetPatternBeat(uint32) override { return tape.Number<uint32>(); }
    IQueryAudioTrack* GetMetronomeTrack() override { return tape.Object(the<StaticAudioTrack>); }
    IQueryGlobalTrackInfo* GetGlobalTrackInfo() override {
        return tape.Object(the<StaticGlobalTrackInfo>);
    }
};

struct StaticProperties final : Static<IQueryProperties> {
    uint32 GetCount() override { return tape.Number<uint32>(); }
    IHostString* GetKey(uint32) override { return tape.Text(); }
    IHostString* GetValue(const char16*) override { return tape.Text(); }
};

struct StaticVideoFormat final : Static<IQueryVideoFormat> {
    int64 GetTimeScale() override { return tape.Number<int64>(); }
    int64 GetSampleSize() override { return tape.Number<int64>(); }
    int32 GetPixelType() override { return tape.Number<int32>(); }
    int32 GetHeight() override { return tape.Number<int32>(); }
    int32 GetWidth() override { return tape.Number<int32>(); }
    uint32 GetParNumerator() override { return tape.Number<uint32>(); }
    uint32 GetParDenominator() override { return tape.Number<uint32>(); }
    uint32 GetFieldType() override { return tape.Number<uint32>(); }
};

struct StaticVideoClip final : Static<IQueryVideoClip> {
    uint32 GetID() override { return tape.Number<uint32>(); }
    uint32 GetFileID() override { return tape.Number<uint32>(); }
    int64 GetSourceInPoint() override { return tape.Number<int64>(); }
    int64 GetDuration() override { return tape.Number<int64>(); }
    int64 GetStartPoint() override { return tape.Number<int64>(); }
    double GetHue() override { return tape.Number<double>(); }
    IHostString* GetName() override { return tape.Text(); }
    bool GetOffline() override { return tape.Number<bool>(); }
    bool GetSelected() override { return tape.Number<bool>(); }
    int32 GetZOrder() override { return tape.Number<int32>(); }
    bool GetLockedInTime() override { return tape.Number<bool>(); }
    IQueryVideoFormat* GetVideoFormat() override { return tape.Object(the<StaticVideoFormat>); }
};

struct StaticVideoTrack final : Static<IQueryVideoTrack> {
    uint32 GetId() override { return tape.Number<uint32>(); }
    bool IsSelected() override { return tape.Number<bool>(); }
    double GetHue() override { return tape.Number<double>(); }
    IHostString* GetName() override { return tape.Text(); }
    int32 GetHeight() override { return tape.Number<int32>(); }
    bool IsMinimized() override { return tape.Number<bool>(); }
    uint32 GetVideoClipCount() override { return tape.Number<uint32>(); }
    IQueryVideoClip* GetVideoClip(uint32) override { return tape.Object(the<StaticVideoClip>); }
};

struct StaticTrackVisibilityPreset final : Static<IQueryTrackVisibilityPreset> {
    uint32 GetId() override { return tape.Number<uint32>(); }
    IHostString* GetName() override { return tape.Text(); }
    uint32 GetTrackCount() override { return tape.Number<uint32>(); }
    void GetTrack(uint32, uint32& trackId, float& height, bool& minimized) override {
        tape.Take(trackId, height, minimized);
    }
};

struct StaticSession final : Static<IQuerySession> {
    void UnusedSlot3() override {}
    IHostObject* GetContext() override { return tape.Object<IHostObject>(the<StaticContext>); }
    void GetFormatVersion(int32* major, int32* minor) override { tape.Take(*major, *minor); }
    void SetProgress(uint32, uint32, uint32, uint32) override {}
    uint32 GetSampleRate() override { return tape.Number<uint32>(); }
    int32 GetChannelCount() override { return tape.Number<int32>(); }
    int64 GetDuration() override { return tape.Number<int64>(); }
    uint32 GetBitDepth() override { return tape.Number<uint32>(); }
    uint32 GetFileCount() override { return tape.Number<uint32>(); }
    IQueryFile* GetFile(uint32) override { return tape.Object(the<StaticFile>); }
    uint32 GetVideoTrackCount() override { return tape.Number<uint32>(); }
    IQueryVideoTrack* GetVideoTrack(uint32) override { return tape.Object(the<StaticVideoTrack>); }
    uint32 GetAudioTrackCount() override { return tape.Number<uint32>(); }
    IQueryAudioTrack* GetAudioTrack(uint32) override { return tape.Object(the<StaticAudioTrack>); }
    uint32 GetTrackVisibilityPresetCount() override { return tape.Number<uint32>(); }
    IQueryTrackVisibilityPreset* GetTrackVisibilityPreset(uint32) override {
        return tape.Object(the<StaticTrackVisibilityPreset>);
    }
    IHostString* GetInputDeviceId() override { return tape.Text(); }
    uint32 GetInputPortCount() override { return tape.Number<uint32>(); }
    int32 GetInputPortId(uint32) override { return tape.Number<int32>(); }
    IHostString* GetInputPortName(uint32) override { return tape.Text(); }
    IHostString* GetOutputDeviceId() override { return tape.Text(); }
    uint32 GetOutputPortCount() override { return tape.Number<uint32>(); }
    int32 GetOutputPortId(uint32) override { return tape.Number<int32>(); }
    IHostString* GetOutputPortName(uint32) override { return tape.Text(); }
    uint32 GetClipGroupCount() override { return tape.Number<uint32>(); }
    IQueryClipGroup* GetClipGroup(uint32) override { return tape.Object(the<StaticClipGroup>); }
    IQueryMetronomeInfo* GetMetronomeInfo() override {
        return tape.Object(the<StaticMetronomeInfo>);
    }
    void GetSelection(int64& start, int64& duration) override { tape.Take(start, duration); }
    void GetCtiPosition(int64& position) override { tape.Take(position); }
    void GetViewState(int64& horizontalViewStart, int64& horizontalViewDuration,
                      int32& trackControlsWidth, int32& verticalScrollOffset) override {
        tape.Take(horizontalViewStart, horizontalViewDuration, trackControlsWidth,
                  verticalScrollOffset);
    }
    void GetTimeFormat(int32& format, int32& frameRate, bool& ntsc, bool& dropFrame,
                       int32& customFrameRate) override {
        tape.Take(format, frameRate, ntsc, dropFrame, customFrameRate);
    }
    void GetPanMode(bool& logarithmic, double& panPower) override {
        tape.Take(logarithmic, panPower);
    }
    bool IsLinkedToDefaultTimeSettings() override { return tape.Number<bool>(); }
    void GetMusicalTime(double& beatsPerMinute, int32& beatsPerBar, int32& noteLength,
                        int32& subdivisions) override {
        tape.Take(beatsPerMinute, beatsPerBar, noteLength, subdivisions);
    }
    IQueryProperties* GetProperties() override { return tape.Object(the<StaticProperties>); }
    IHostString* GetXmpMetadata() override { return tape.Text(); }
    void GetSmpteStart(int64& start) override { tape.Take(start); }
    bool IsPlayOverlappingClips() override { return tape.Number<bool>(); }
};

}  // namespace

AnswerTape RecordAnswers(refhost::Plugin& plugin, const std::u16string& path,
                         const refhost::model::Session& session) {
    AnswerTape answers;
    refhost::Recorder recorder(
        {.sink = [&](const refhost::CallRecord& call) { answers.Append(call); },
         .interceptor = {}});
    refhost::WriteOptions options;
    options.wrap = [&](IQuerySession& real) {
        return refhost::Ref<IQuerySession>::Retain(&recorder.Wrap(real));
    };
    const refhost::WriteResult written = refhost::WriteSession(plugin, path, session, options);
    if (written.result != SessionResult::Ok) {
        throw std::runtime_error("the session cannot be written" +
                                 (written.messages.empty() ? "" : ": " + written.messages.front()));
    }
    return answers;
}

IQuerySession& StaticHost(const AnswerTape& recorded) {
    tape.Wind(recorded);
    return the<StaticSession>;
}

bool StaticHostIsAtEnd() {
    return tape.IsAtEnd();
}

}  // namespace bench
