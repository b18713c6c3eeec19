// Proves that every operation of every host interface lands in the slot that
// docs/host-interfaces.md states, with the result and the parameters stated there. Each is called,
// through its declaration, on an object that is nothing but a table of functions, each of which
// notes its own place.

#include <gtest/gtest.h>

#include <array>
#include <boost/core/demangle.hpp>
#include <cctype>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
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
#include "host/HostObject.h"
#include "host/LogTarget.h"
#include "host/Metronome.h"
#include "host/MidiClips.h"
#include "host/Properties.h"
#include "host/Registration.h"
#include "host/Sends.h"
#include "host/Session.h"
#include "host/TrackVisibility.h"
#include "host/VideoClips.h"
#include "host/VideoTracks.h"

namespace tses {
namespace {

// The recording table
// ------------------------------------------------------------------------------

std::size_t calledSlot = 0;

// One function of the table. It ignores its arguments, whatever they are; the result serves every
// operation that returns a number, a truth value or an object.
using SlotFunction = std::uint64_t (*)(void*);

template <std::size_t Index>
std::uint64_t NoteSlot(void*) {
    calledSlot = Index + 1;
    return 0;
}

constexpr std::size_t kMostSlots = 64;

template <std::size_t... Indices>
constexpr std::array<SlotFunction, sizeof...(Indices)> MakeTable(std::index_sequence<Indices...>) {
    return {&NoteSlot<Indices>...};
}

constexpr std::array<SlotFunction, kMostSlots> kRecordingTable =
    MakeTable(std::make_index_sequence<kMostSlots>{});

struct TableOnly {
    const SlotFunction* table = kRecordingTable.data();
};

// Volatile, so that the compiler cannot know what it points to and has to go through the table.
TableOnly tableOnly;
TableOnly* volatile recordingObject = &tableOnly;

// An argument of any type; references refer to something that can be written to.
template <class T>
struct Argument {
    std::remove_reference_t<T> value{};
    T Get() {
        if constexpr (std::is_reference_v<T>) {
            return value;
        } else {
            return std::move(value);
        }
    }
};

template <class Interface, class Result, class... Parameters>
std::size_t SlotOf(Result (Interface::*operation)(Parameters...)) {
    calledSlot = 0;
    auto* object = reinterpret_cast<Interface*>(recordingObject);
    static_cast<void>((object->*operation)(Argument<Parameters>{}.Get()...));
    return calledSlot;
}

// Signatures as the page writes them
// ---------------------------------------------------------------

template <class T>
std::string TypeName() {
    if constexpr (std::is_reference_v<T>) {
        return TypeName<std::remove_reference_t<T>>() + "&";
    } else if constexpr (std::is_pointer_v<T>) {
        return TypeName<std::remove_pointer_t<T>>() + "*" + (std::is_const_v<T> ? " const" : "");
    } else if constexpr (std::is_const_v<T>) {
        return "const " + TypeName<std::remove_const_t<T>>();
    } else if constexpr (std::same_as<T, kelcore::byte>) {
        return "byte";
    } else if constexpr (std::same_as<T, kelcore::char16>) {
        return "char16";
    } else if constexpr (std::same_as<T, kelcore::int32>) {
        return "int32";
    } else if constexpr (std::same_as<T, kelcore::uint32>) {
        return "uint32";
    } else if constexpr (std::same_as<T, kelcore::int64>) {
        return "int64";
    } else {
        const std::string name = boost::core::demangle(typeid(T).name());
        return name.starts_with("tses::") ? name.substr(6) : name;
    }
}

template <class Interface, class Result, class... Parameters>
std::string Signature(const std::string& name, Result (Interface::*)(Parameters...)) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + TypeName<Parameters>()), ...);
    return TypeName<Result>() + " " + name + "(" + list + ")";
}

// "void SetFile(const char16* path, uint32 id)" without the names of the parameters: those are the
// words, after a blank, that a comma or the end of the list follows.
std::string WithoutParameterNames(std::string_view signature) {
    std::string text;
    for (const char next : signature) {
        if (next == ',' || (next == ')' && !text.ends_with('('))) {
            text.erase(text.find_last_of(' '));
        }
        text += next;
    }
    return text;
}

// What the declarations say
// ------------------------------------------------------------------------

struct Interface {
    std::string base;
    std::map<std::string, std::size_t> slots;  // by signature
};
using Interfaces = std::map<std::string, Interface>;

class DeclaredInterfaces {
public:
    DeclaredInterfaces();

    const Interfaces& Get() const { return interfaces_; }

private:
    using Operations = std::vector<std::pair<std::string, std::size_t>>;

    template <class Type>
    void Add(const Operations& operations) {
        Add(TypeName<Type>(), "", operations);
    }
    template <class Type, std::derived_from<IHostObject> Base>
    requires std::derived_from<Type, Base>
    void Add(const Operations& operations) { Add(TypeName<Type>(), TypeName<Base>(), operations); }
    void Add(const std::string& name, const std::string& base, const Operations& operations) {
        interfaces_[name] = {base, {operations.begin(), operations.end()}};
    }

    Interfaces interfaces_;
};

#define ORVO_OPERATION(type, name) \
    { Signature(#name, &type::name), SlotOf(&type::name) }

DeclaredInterfaces::DeclaredInterfaces() {
    Add<IHostObject>(
        {ORVO_OPERATION(IHostObject, AddReference), ORVO_OPERATION(IHostObject, Release)});
    Add<IHostString, IHostObject>({ORVO_OPERATION(IHostString, UnusedSlot3),
                                   ORVO_OPERATION(IHostString, GetData),
                                   ORVO_OPERATION(IHostString, GetLength)});
    Add<IPlugInRegistrar, IHostObject>({ORVO_OPERATION(IPlugInRegistrar, UnusedSlot3),
                                        ORVO_OPERATION(IPlugInRegistrar, DeclareInterfaceVersion),
                                        ORVO_OPERATION(IPlugInRegistrar, UnusedSlot5),
                                        ORVO_OPERATION(IPlugInRegistrar, SetPlugInIdentity),
                                        ORVO_OPERATION(IPlugInRegistrar, RegisterOpenFormat),
                                        ORVO_OPERATION(IPlugInRegistrar, RegisterSaveFormat)});
    Add<IHostFileRef, IHostObject>(
        {ORVO_OPERATION(IHostFileRef, UnusedSlot3), ORVO_OPERATION(IHostFileRef, GetPath)});
    Add<IHostLogTarget, IHostObject>(
        {ORVO_OPERATION(IHostLogTarget, UnusedSlot3), ORVO_OPERATION(IHostLogTarget, UnusedSlot4),
         ORVO_OPERATION(IHostLogTarget, UnusedSlot5), ORVO_OPERATION(IHostLogTarget, UnusedSlot6),
         ORVO_OPERATION(IHostLogTarget, UnusedSlot7), ORVO_OPERATION(IHostLogTarget, UnusedSlot8),
         ORVO_OPERATION(IHostLogTarget, LogMessage)});
    Add<IEditSession, IHostObject>({ORVO_OPERATION(IEditSession, UnusedSlot3),
                                    ORVO_OPERATION(IEditSession, GetLogTarget),
                                    ORVO_OPERATION(IEditSession, SetProgress),
                                    ORVO_OPERATION(IEditSession, SetFormatDescription),
                                    ORVO_OPERATION(IEditSession, SetSampleRate),
                                    ORVO_OPERATION(IEditSession, SetChannelCount),
                                    ORVO_OPERATION(IEditSession, SetDuration),
                                    ORVO_OPERATION(IEditSession, SetBitDepth),
                                    ORVO_OPERATION(IEditSession, GetFile),
                                    ORVO_OPERATION(IEditSession, GetVideoTrack),
                                    ORVO_OPERATION(IEditSession, GetAudioTrack),
                                    ORVO_OPERATION(IEditSession, GetMetronomeInfo),
                                    ORVO_OPERATION(IEditSession, CreateTrackVisibilityPreset),
                                    ORVO_OPERATION(IEditSession, SetInputDeviceId),
                                    ORVO_OPERATION(IEditSession, AddInputPort),
                                    ORVO_OPERATION(IEditSession, SetOutputDeviceId),
                                    ORVO_OPERATION(IEditSession, AddOutputPort),
                                    ORVO_OPERATION(IEditSession, CreateClipGroup),
                                    ORVO_OPERATION(IEditSession, SetSelection),
                                    ORVO_OPERATION(IEditSession, SetCtiPosition),
                                    ORVO_OPERATION(IEditSession, SetViewState),
                                    ORVO_OPERATION(IEditSession, SetTimeFormat),
                                    ORVO_OPERATION(IEditSession, SetPanMode),
                                    ORVO_OPERATION(IEditSession, SetLinkToDefaultTimeSettings),
                                    ORVO_OPERATION(IEditSession, SetMusicalTime),
                                    ORVO_OPERATION(IEditSession, GetProperties),
                                    ORVO_OPERATION(IEditSession, SetXmpMetadata),
                                    ORVO_OPERATION(IEditSession, SetVersionDependentValue),
                                    ORVO_OPERATION(IEditSession, SetSmpteStart),
                                    ORVO_OPERATION(IEditSession, SetPlayOverlappingClips)});
    Add<IQuerySession, IHostObject>({ORVO_OPERATION(IQuerySession, UnusedSlot3),
                                     ORVO_OPERATION(IQuerySession, GetContext),
                                     ORVO_OPERATION(IQuerySession, GetFormatVersion),
                                     ORVO_OPERATION(IQuerySession, SetProgress),
                                     ORVO_OPERATION(IQuerySession, GetSampleRate),
                                     ORVO_OPERATION(IQuerySession, GetChannelCount),
                                     ORVO_OPERATION(IQuerySession, GetDuration),
                                     ORVO_OPERATION(IQuerySession, GetBitDepth),
                                     ORVO_OPERATION(IQuerySession, GetFileCount),
                                     ORVO_OPERATION(IQuerySession, GetFile),
                                     ORVO_OPERATION(IQuerySession, GetVideoTrackCount),
                                     ORVO_OPERATION(IQuerySession, GetVideoTrack),
                                     ORVO_OPERATION(IQuerySession, GetAudioTrackCount),
                                     ORVO_OPERATION(IQuerySession, GetAudioTrack),
                                     ORVO_OPERATION(IQuerySession, GetTrackVisibilityPresetCount),
                                     ORVO_OPERATION(IQuerySession, GetTrackVisibilityPreset),
                                     ORVO_OPERATION(IQuerySession, GetInputDeviceId),
                                     ORVO_OPERATION(IQuerySession, GetInputPortCount),
                                     ORVO_OPERATION(IQuerySession, GetInputPortId),
                                     ORVO_OPERATION(IQuerySession, GetInputPortName),
                                     ORVO_OPERATION(IQuerySession, GetOutputDeviceId),
                                     ORVO_OPERATION(IQuerySession, GetOutputPortCount),
                                     ORVO_OPERATION(IQuerySession, GetOutputPortId),
                                     ORVO_OPERATION(IQuerySession, GetOutputPortName),
                                     ORVO_OPERATION(IQuerySession, GetClipGroupCount),
                                     ORVO_OPERATION(IQuerySession, GetClipGroup),
                                     ORVO_OPERATION(IQuerySession, GetMetronomeInfo),
                                     ORVO_OPERATION(IQuerySession, GetSelection),
                                     ORVO_OPERATION(IQuerySession, GetCtiPosition),
                                     ORVO_OPERATION(IQuerySession, GetViewState),
                                     ORVO_OPERATION(IQuerySession, GetTimeFormat),
                                     ORVO_OPERATION(IQuerySession, GetPanMode),
                                     ORVO_OPERATION(IQuerySession, IsLinkedToDefaultTimeSettings),
                                     ORVO_OPERATION(IQuerySession, GetMusicalTime),
                                     ORVO_OPERATION(IQuerySession, GetProperties),
                                     ORVO_OPERATION(IQuerySession, GetXmpMetadata),
                                     ORVO_OPERATION(IQuerySession, GetSmpteStart),
                                     ORVO_OPERATION(IQuerySession, IsPlayOverlappingClips)});
    Add<IEditFile, IHostObject>({ORVO_OPERATION(IEditFile, SetPath),
                                 ORVO_OPERATION(IEditFile, SetRecoveryId),
                                 ORVO_OPERATION(IEditFile, SetMediaHandler),
                                 ORVO_OPERATION(IEditFile, SetImporterPrivateSettings)});
    Add<IQueryFile, IHostObject>(
        {ORVO_OPERATION(IQueryFile, GetId), ORVO_OPERATION(IQueryFile, GetPath),
         ORVO_OPERATION(IQueryFile, GetRecoveryId), ORVO_OPERATION(IQueryFile, GetMediaHandler),
         ORVO_OPERATION(IQueryFile, GetImporterPrivateSettings)});
    Add<IEditInstrumentTrack, IHostObject>({ORVO_OPERATION(IEditInstrumentTrack, SetMidiIn),
                                            ORVO_OPERATION(IEditInstrumentTrack, SetMidiAll)});
    Add<IQueryInstrumentTrack, IHostObject>({ORVO_OPERATION(IQueryInstrumentTrack, GetMidiIn),
                                             ORVO_OPERATION(IQueryInstrumentTrack, IsMidiAll)});
    Add<IEditAudioTrack, IHostObject>({ORVO_OPERATION(IEditAudioTrack, CreateAudioClip),
                                       ORVO_OPERATION(IEditAudioTrack, GetMIDIClipList)});
    Add<IEditAudioTrackPrivate, IEditAudioTrack>(
        {ORVO_OPERATION(IEditAudioTrackPrivate, SetIndex),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetKind),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetSelected),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetHue),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetMinimized),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetName),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetHeight),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetPhaseInverted),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetPreRendered),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetSumToMono),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetPreRenderedFile),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetAutomationLaneOpenState),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetVisible),
         ORVO_OPERATION(IEditAudioTrackPrivate, GetInstrument),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetAudioChannelType),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetSolo),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetRecordArmed),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetMonitoring),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetSoloSafe),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetOutputTrack),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetInput),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetHardwareOutput),
         ORVO_OPERATION(IEditAudioTrackPrivate, GetFaderComponent),
         ORVO_OPERATION(IEditAudioTrackPrivate, GetMuteComponent),
         ORVO_OPERATION(IEditAudioTrackPrivate, GetPanComponent),
         ORVO_OPERATION(IEditAudioTrackPrivate, GetEQComponent),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetAutomationMode),
         ORVO_OPERATION(IEditAudioTrackPrivate, GetSendList),
         ORVO_OPERATION(IEditAudioTrackPrivate, GetEffectsRack),
         ORVO_OPERATION(IEditAudioTrackPrivate, SetEditParameter)});
    Add<IQueryAudioTrack, IHostObject>({ORVO_OPERATION(IQueryAudioTrack, GetClipCount),
                                        ORVO_OPERATION(IQueryAudioTrack, GetClip),
                                        ORVO_OPERATION(IQueryAudioTrack, GetMIDIClipList)});
    Add<IQueryAudioTrackPrivate, IQueryAudioTrack>(
        {ORVO_OPERATION(IQueryAudioTrackPrivate, GetId),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetIndex),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetKind),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsSelected),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetHue),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetName),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetHeight),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsMinimized),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsPhaseInverted),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsPreRendered),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsSumToMono),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetPreRenderedFile),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetEffectsRack),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetEditParameterCount),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetEditParameter),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsAutomationLaneOpen),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetSendList),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsVisible),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetInstrument),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetAudioChannelType),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsSolo),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsRecordArmed),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsMonitoring),
         ORVO_OPERATION(IQueryAudioTrackPrivate, IsSoloSafe),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetOutputTrackId),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetInputId),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetHardwareOutputId),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetFaderComponent),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetMuteComponent),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetPanComponent),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetEQComponent),
         ORVO_OPERATION(IQueryAudioTrackPrivate, GetAutomationMode)});
    Add<IEditVideoTrack, IHostObject>(
        {ORVO_OPERATION(IEditVideoTrack, SetIndex), ORVO_OPERATION(IEditVideoTrack, SetSelected),
         ORVO_OPERATION(IEditVideoTrack, SetHue), ORVO_OPERATION(IEditVideoTrack, SetMinimized),
         ORVO_OPERATION(IEditVideoTrack, SetName), ORVO_OPERATION(IEditVideoTrack, SetHeight),
         ORVO_OPERATION(IEditVideoTrack, CreateVideoClip)});
    Add<IQueryVideoTrack, IHostObject>(
        {ORVO_OPERATION(IQueryVideoTrack, GetId), ORVO_OPERATION(IQueryVideoTrack, IsSelected),
         ORVO_OPERATION(IQueryVideoTrack, GetHue), ORVO_OPERATION(IQueryVideoTrack, GetName),
         ORVO_OPERATION(IQueryVideoTrack, GetHeight), ORVO_OPERATION(IQueryVideoTrack, IsMinimized),
         ORVO_OPERATION(IQueryVideoTrack, GetVideoClipCount),
         ORVO_OPERATION(IQueryVideoTrack, GetVideoClip)});
    Add<IEditTrackVisibilityPreset, IHostObject>(
        {ORVO_OPERATION(IEditTrackVisibilityPreset, SetId),
         ORVO_OPERATION(IEditTrackVisibilityPreset, SetName),
         ORVO_OPERATION(IEditTrackVisibilityPreset, AddTrack)});
    Add<IQueryTrackVisibilityPreset, IHostObject>(
        {ORVO_OPERATION(IQueryTrackVisibilityPreset, GetId),
         ORVO_OPERATION(IQueryTrackVisibilityPreset, GetName),
         ORVO_OPERATION(IQueryTrackVisibilityPreset, GetTrackCount),
         ORVO_OPERATION(IQueryTrackVisibilityPreset, GetTrack)});
    Add<IEditSendSlot, IHostObject>({ORVO_OPERATION(IEditSendSlot, SetSlotIndex),
                                     ORVO_OPERATION(IEditSendSlot, SetSendOutputId),
                                     ORVO_OPERATION(IEditSendSlot, SetPreFader),
                                     ORVO_OPERATION(IEditSendSlot, GetSendComponent),
                                     ORVO_OPERATION(IEditSendSlot, GetPanComponent),
                                     ORVO_OPERATION(IEditSendSlot, SetDestCompIndex)});
    Add<IEditSendList, IHostObject>({ORVO_OPERATION(IEditSendList, AddSlot)});
    Add<IQuerySendSlot, IHostObject>({ORVO_OPERATION(IQuerySendSlot, GetSlotIndex),
                                      ORVO_OPERATION(IQuerySendSlot, GetSendOutputId),
                                      ORVO_OPERATION(IQuerySendSlot, IsPreFader),
                                      ORVO_OPERATION(IQuerySendSlot, GetSendComponent),
                                      ORVO_OPERATION(IQuerySendSlot, GetPanComponent),
                                      ORVO_OPERATION(IQuerySendSlot, GetDestCompIndex)});
    Add<IQuerySendList, IHostObject>(
        {ORVO_OPERATION(IQuerySendList, GetSlotCount), ORVO_OPERATION(IQuerySendList, GetSlot)});
    Add<IEditAudioClip, IHostObject>({ORVO_OPERATION(IEditAudioClip, SetFileID),
                                      ORVO_OPERATION(IEditAudioClip, SetSourceInPoint),
                                      ORVO_OPERATION(IEditAudioClip, SetDuration),
                                      ORVO_OPERATION(IEditAudioClip, SetStartPoint),
                                      ORVO_OPERATION(IEditAudioClip, SetHue),
                                      ORVO_OPERATION(IEditAudioClip, SetLooped),
                                      ORVO_OPERATION(IEditAudioClip, SetName),
                                      ORVO_OPERATION(IEditAudioClip, SetOffline),
                                      ORVO_OPERATION(IEditAudioClip, SetSelected),
                                      ORVO_OPERATION(IEditAudioClip, SetZOrder),
                                      ORVO_OPERATION(IEditAudioClip, SetChannelSource),
                                      ORVO_OPERATION(IEditAudioClip, SetLockedInTime),
                                      ORVO_OPERATION(IEditAudioClip, GetFadeIn),
                                      ORVO_OPERATION(IEditAudioClip, GetFadeOut),
                                      ORVO_OPERATION(IEditAudioClip, GetClipStretch),
                                      ORVO_OPERATION(IEditAudioClip, SetClipAutoCrossfade),
                                      ORVO_OPERATION(IEditAudioClip, SetCrossFadeHeadClipID),
                                      ORVO_OPERATION(IEditAudioClip, SetCrossFadeTailClipID),
                                      ORVO_OPERATION(IEditAudioClip, AddTake),
                                      ORVO_OPERATION(IEditAudioClip, GetClipGainComponent),
                                      ORVO_OPERATION(IEditAudioClip, GetClipMuteComponent),
                                      ORVO_OPERATION(IEditAudioClip, GetClipPanComponent),
                                      ORVO_OPERATION(IEditAudioClip, GetEffectsRack),
                                      ORVO_OPERATION(IEditAudioClip, SetEditParameter),
                                      ORVO_OPERATION(IEditAudioClip, GetProperties)});
    Add<IQueryAudioClip, IHostObject>({ORVO_OPERATION(IQueryAudioClip, GetID),
                                       ORVO_OPERATION(IQueryAudioClip, GetFileID),
                                       ORVO_OPERATION(IQueryAudioClip, GetSourceInPoint),
                                       ORVO_OPERATION(IQueryAudioClip, GetDuration),
                                       ORVO_OPERATION(IQueryAudioClip, GetStartPoint),
                                       ORVO_OPERATION(IQueryAudioClip, GetHue),
                                       ORVO_OPERATION(IQueryAudioClip, GetLooped),
                                       ORVO_OPERATION(IQueryAudioClip, GetName),
                                       ORVO_OPERATION(IQueryAudioClip, GetOffline),
                                       ORVO_OPERATION(IQueryAudioClip, GetSelected),
                                       ORVO_OPERATION(IQueryAudioClip, GetZOrder),
                                       ORVO_OPERATION(IQueryAudioClip, GetLockedInTime),
                                       ORVO_OPERATION(IQueryAudioClip, GetFadeIn),
                                       ORVO_OPERATION(IQueryAudioClip, GetFadeOut),
                                       ORVO_OPERATION(IQueryAudioClip, GetClipStretch),
                                       ORVO_OPERATION(IQueryAudioClip, GetCrossFadeHeadClipID),
                                       ORVO_OPERATION(IQueryAudioClip, GetCrossFadeTailClipID),
                                       ORVO_OPERATION(IQueryAudioClip, GetClipAutoCrossfade),
                                       ORVO_OPERATION(IQueryAudioClip, GetTakeSourceInPoint),
                                       ORVO_OPERATION(IQueryAudioClip, GetTakeCount),
                                       ORVO_OPERATION(IQueryAudioClip, GetEditParameterCount),
                                       ORVO_OPERATION(IQueryAudioClip, GetEditParameter),
                                       ORVO_OPERATION(IQueryAudioClip, GetEffectsRack),
                                       ORVO_OPERATION(IQueryAudioClip, GetClipGainComponent),
                                       ORVO_OPERATION(IQueryAudioClip, GetClipMuteComponent),
                                       ORVO_OPERATION(IQueryAudioClip, GetClipPanComponent),
                                       ORVO_OPERATION(IQueryAudioClip, GetProperties),
                                       ORVO_OPERATION(IQueryAudioClip, GetChannelCount),
                                       ORVO_OPERATION(IQueryAudioClip, GetChannelSource)});
    Add<IEditClipFade, IHostObject>(
        {ORVO_OPERATION(IEditClipFade, SetStartPoint), ORVO_OPERATION(IEditClipFade, SetEndPoint),
         ORVO_OPERATION(IEditClipFade, SetType), ORVO_OPERATION(IEditClipFade, SetShape),
         ORVO_OPERATION(IEditClipFade, SetCrossFadeLinkType)});
    Add<IQueryClipFade, IHostObject>(
        {ORVO_OPERATION(IQueryClipFade, GetStartPoint), ORVO_OPERATION(IQueryClipFade, GetEndPoint),
         ORVO_OPERATION(IQueryClipFade, GetType), ORVO_OPERATION(IQueryClipFade, GetShape),
         ORVO_OPERATION(IQueryClipFade, GetCrossFadeLinkType)});
    Add<IEditClipStretch, IHostObject>({ORVO_OPERATION(IEditClipStretch, SetStretchMode),
                                        ORVO_OPERATION(IEditClipStretch, SetStretchType),
                                        ORVO_OPERATION(IEditClipStretch, SetStretchRatio),
                                        ORVO_OPERATION(IEditClipStretch, SetPitchAdjustment),
                                        ORVO_OPERATION(IEditClipStretch, SetStretchQuality),
                                        ORVO_OPERATION(IEditClipStretch, SetTransientSensitivity),
                                        ORVO_OPERATION(IEditClipStretch, SetAdaptiveWindowSize),
                                        ORVO_OPERATION(IEditClipStretch, SetPreserveFormants)});
    Add<IQueryClipStretch, IHostObject>({ORVO_OPERATION(IQueryClipStretch, GetStretchMode),
                                         ORVO_OPERATION(IQueryClipStretch, GetStretchType),
                                         ORVO_OPERATION(IQueryClipStretch, GetStretchRatio),
                                         ORVO_OPERATION(IQueryClipStretch, GetPitchAdjustment),
                                         ORVO_OPERATION(IQueryClipStretch, GetStretchQuality),
                                         ORVO_OPERATION(IQueryClipStretch, GetTransientSensitivity),
                                         ORVO_OPERATION(IQueryClipStretch, GetAdaptiveWindowSize),
                                         ORVO_OPERATION(IQueryClipStretch, GetPreserveFormants)});
    Add<IEditMIDIClip, IHostObject>(
        {ORVO_OPERATION(IEditMIDIClip, SetMIDIEvents),
         ORVO_OPERATION(IEditMIDIClip, SetSourceInPoint),
         ORVO_OPERATION(IEditMIDIClip, SetDuration), ORVO_OPERATION(IEditMIDIClip, SetStartPoint),
         ORVO_OPERATION(IEditMIDIClip, SetHue), ORVO_OPERATION(IEditMIDIClip, SetName),
         ORVO_OPERATION(IEditMIDIClip, SetSelected),
         ORVO_OPERATION(IEditMIDIClip, SetLockedInTime)});
    Add<IEditMIDIClipList, IHostObject>({ORVO_OPERATION(IEditMIDIClipList, CreateMIDIClip)});
    Add<IQueryMIDIClip, IHostObject>(
        {ORVO_OPERATION(IQueryMIDIClip, GetID), ORVO_OPERATION(IQueryMIDIClip, GetMIDIEventsSize),
         ORVO_OPERATION(IQueryMIDIClip, GetMIDIEvents),
         ORVO_OPERATION(IQueryMIDIClip, GetSourceInPoint),
         ORVO_OPERATION(IQueryMIDIClip, GetDuration), ORVO_OPERATION(IQueryMIDIClip, GetStartPoint),
         ORVO_OPERATION(IQueryMIDIClip, GetHue), ORVO_OPERATION(IQueryMIDIClip, GetName),
         ORVO_OPERATION(IQueryMIDIClip, GetSelected),
         ORVO_OPERATION(IQueryMIDIClip, GetLockedInTime)});
    Add<IQueryMIDIClipList, IHostObject>({ORVO_OPERATION(IQueryMIDIClipList, GetCount),
                                          ORVO_OPERATION(IQueryMIDIClipList, GetClip)});
    Add<IEditGlobalTrackInfo, IHostObject>(
        {ORVO_OPERATION(IEditGlobalTrackInfo, SetTimeSigVisible),
         ORVO_OPERATION(IEditGlobalTrackInfo, SetKeySigVisible),
         ORVO_OPERATION(IEditGlobalTrackInfo, SetTempoVisible),
         ORVO_OPERATION(IEditGlobalTrackInfo, SetTempoEvents),
         ORVO_OPERATION(IEditGlobalTrackInfo, SetTimeSignatureEvents),
         ORVO_OPERATION(IEditGlobalTrackInfo, SetKeySignatureEvents)});
    Add<IQueryGlobalTrackInfo, IHostObject>(
        {ORVO_OPERATION(IQueryGlobalTrackInfo, GetTimeSigVisible),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetKeySigVisible),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetTempoVisible),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetTempoEventsSize),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetTempoEvents),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetTimeSignatureEventsSize),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetTimeSignatureEvents),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetKeySignatureEventsSize),
         ORVO_OPERATION(IQueryGlobalTrackInfo, GetKeySignatureEvents)});
    Add<IEditVideoFormat, IHostObject>({ORVO_OPERATION(IEditVideoFormat, SetFrameTiming),
                                        ORVO_OPERATION(IEditVideoFormat, SetPixelType),
                                        ORVO_OPERATION(IEditVideoFormat, SetDimensions),
                                        ORVO_OPERATION(IEditVideoFormat, SetPixelAspectRatio),
                                        ORVO_OPERATION(IEditVideoFormat, SetFieldType)});
    Add<IQueryVideoFormat, IHostObject>({ORVO_OPERATION(IQueryVideoFormat, GetTimeScale),
                                         ORVO_OPERATION(IQueryVideoFormat, GetSampleSize),
                                         ORVO_OPERATION(IQueryVideoFormat, GetPixelType),
                                         ORVO_OPERATION(IQueryVideoFormat, GetHeight),
                                         ORVO_OPERATION(IQueryVideoFormat, GetWidth),
                                         ORVO_OPERATION(IQueryVideoFormat, GetParNumerator),
                                         ORVO_OPERATION(IQueryVideoFormat, GetParDenominator),
                                         ORVO_OPERATION(IQueryVideoFormat, GetFieldType)});
    Add<IEditVideoClip, IHostObject>(
        {ORVO_OPERATION(IEditVideoClip, SetFileID),
         ORVO_OPERATION(IEditVideoClip, SetSourceInPoint),
         ORVO_OPERATION(IEditVideoClip, SetDuration), ORVO_OPERATION(IEditVideoClip, SetStartPoint),
         ORVO_OPERATION(IEditVideoClip, SetHue), ORVO_OPERATION(IEditVideoClip, SetName),
         ORVO_OPERATION(IEditVideoClip, SetOffline), ORVO_OPERATION(IEditVideoClip, SetSelected),
         ORVO_OPERATION(IEditVideoClip, SetZOrder), ORVO_OPERATION(IEditVideoClip, SetLockedInTime),
         ORVO_OPERATION(IEditVideoClip, GetVideoFormat)});
    Add<IQueryVideoClip, IHostObject>(
        {ORVO_OPERATION(IQueryVideoClip, GetID), ORVO_OPERATION(IQueryVideoClip, GetFileID),
         ORVO_OPERATION(IQueryVideoClip, GetSourceInPoint),
         ORVO_OPERATION(IQueryVideoClip, GetDuration),
         ORVO_OPERATION(IQueryVideoClip, GetStartPoint), ORVO_OPERATION(IQueryVideoClip, GetHue),
         ORVO_OPERATION(IQueryVideoClip, GetName), ORVO_OPERATION(IQueryVideoClip, GetOffline),
         ORVO_OPERATION(IQueryVideoClip, GetSelected), ORVO_OPERATION(IQueryVideoClip, GetZOrder),
         ORVO_OPERATION(IQueryVideoClip, GetLockedInTime),
         ORVO_OPERATION(IQueryVideoClip, GetVideoFormat)});
    Add<IEditClipGroup, IHostObject>({ORVO_OPERATION(IEditClipGroup, AddItem),
                                      ORVO_OPERATION(IEditClipGroup, SetHue),
                                      ORVO_OPERATION(IEditClipGroup, SetName)});
    Add<IQueryClipGroup, IHostObject>(
        {ORVO_OPERATION(IQueryClipGroup, GetItemCount), ORVO_OPERATION(IQueryClipGroup, GetItem),
         ORVO_OPERATION(IQueryClipGroup, GetName), ORVO_OPERATION(IQueryClipGroup, GetHue),
         ORVO_OPERATION(IQueryClipGroup, GetID)});
    Add<IEditComponent, IHostObject>(
        {ORVO_OPERATION(IEditComponent, SetComponentID), ORVO_OPERATION(IEditComponent, SetName),
         ORVO_OPERATION(IEditComponent, SetParameterValue),
         ORVO_OPERATION(IEditComponent, SetParameterName),
         ORVO_OPERATION(IEditComponent, GetParameterAutomation),
         ORVO_OPERATION(IEditComponent, SetPresetChunk),
         ORVO_OPERATION(IEditComponent, SetEditorVisible),
         ORVO_OPERATION(IEditComponent, SetEditorRect), ORVO_OPERATION(IEditComponent, SetPowered),
         ORVO_OPERATION(IEditComponent, SetParameterSafeDuringWrite),
         ORVO_OPERATION(IEditComponent, SetComponentGuid),
         ORVO_OPERATION(IEditComponent, SetPresetName)});
    Add<IEditEffectsSlot, IHostObject>({ORVO_OPERATION(IEditEffectsSlot, SetSlotIndex),
                                        ORVO_OPERATION(IEditEffectsSlot, SetBypassed),
                                        ORVO_OPERATION(IEditEffectsSlot, GetComponent),
                                        ORVO_OPERATION(IEditEffectsSlot, UnusedSlot6),
                                        ORVO_OPERATION(IEditEffectsSlot, UnusedSlot7),
                                        ORVO_OPERATION(IEditEffectsSlot, SetSideChainChannels),
                                        ORVO_OPERATION(IEditEffectsSlot, AddInputChannel),
                                        ORVO_OPERATION(IEditEffectsSlot, AddOutputChannel),
                                        ORVO_OPERATION(IEditEffectsSlot, SetBusConfig)});
    Add<IEditEffectsRack, IHostObject>({ORVO_OPERATION(IEditEffectsRack, GetMixComponent),
                                        ORVO_OPERATION(IEditEffectsRack, GetInputComponent),
                                        ORVO_OPERATION(IEditEffectsRack, GetOutputComponent),
                                        ORVO_OPERATION(IEditEffectsRack, SetPreFader),
                                        ORVO_OPERATION(IEditEffectsRack, AddSlot)});
    Add<IQueryComponentPreset, IHostObject>({ORVO_OPERATION(IQueryComponentPreset, GetName)});
    Add<IQueryComponent, IHostObject>(
        {ORVO_OPERATION(IQueryComponent, GetComponentID), ORVO_OPERATION(IQueryComponent, GetName),
         ORVO_OPERATION(IQueryComponent, GetParameterCount),
         ORVO_OPERATION(IQueryComponent, GetParameterValue),
         ORVO_OPERATION(IQueryComponent, GetParameterName),
         ORVO_OPERATION(IQueryComponent, GetParameterAutomation),
         ORVO_OPERATION(IQueryComponent, GetPresetChunkSize),
         ORVO_OPERATION(IQueryComponent, GetPresetChunk),
         ORVO_OPERATION(IQueryComponent, IsEditorVisible),
         ORVO_OPERATION(IQueryComponent, GetEditorRect), ORVO_OPERATION(IQueryComponent, IsPowered),
         ORVO_OPERATION(IQueryComponent, IsParameterSafeDuringWrite),
         ORVO_OPERATION(IQueryComponent, GetComponentGuid),
         ORVO_OPERATION(IQueryComponent, GetPreset)});
    Add<IQueryEffectsSlot, IHostObject>({ORVO_OPERATION(IQueryEffectsSlot, IsBypassed),
                                         ORVO_OPERATION(IQueryEffectsSlot, GetComponent),
                                         ORVO_OPERATION(IQueryEffectsSlot, GetSideChainChannels),
                                         ORVO_OPERATION(IQueryEffectsSlot, GetBusConfig),
                                         ORVO_OPERATION(IQueryEffectsSlot, GetInputChannelCount),
                                         ORVO_OPERATION(IQueryEffectsSlot, GetInputChannel),
                                         ORVO_OPERATION(IQueryEffectsSlot, GetOutputChannelCount),
                                         ORVO_OPERATION(IQueryEffectsSlot, GetOutputChannel)});
    Add<IQueryEffectsRack, IHostObject>({ORVO_OPERATION(IQueryEffectsRack, GetMixComponent),
                                         ORVO_OPERATION(IQueryEffectsRack, GetInputComponent),
                                         ORVO_OPERATION(IQueryEffectsRack, GetOutputComponent),
                                         ORVO_OPERATION(IQueryEffectsRack, IsPreFader),
                                         ORVO_OPERATION(IQueryEffectsRack, GetSlotCount),
                                         ORVO_OPERATION(IQueryEffectsRack, GetSlotIndex),
                                         ORVO_OPERATION(IQueryEffectsRack, GetSlot)});
    Add<IEditAutomationLane, IHostObject>({ORVO_OPERATION(IEditAutomationLane, SetEnableSplines),
                                           ORVO_OPERATION(IEditAutomationLane, AddKeyframe),
                                           ORVO_OPERATION(IEditAutomationLane, SetReadOnly)});
    Add<IQueryAutomationLane, IHostObject>({ORVO_OPERATION(IQueryAutomationLane, GetKeyframeCount),
                                            ORVO_OPERATION(IQueryAutomationLane, GetEnableSplines),
                                            ORVO_OPERATION(IQueryAutomationLane, GetKeyframe),
                                            ORVO_OPERATION(IQueryAutomationLane, IsReadOnly)});
    Add<IEditMetronomeInfo, IHostObject>({ORVO_OPERATION(IEditMetronomeInfo, SetEnabled),
                                          ORVO_OPERATION(IEditMetronomeInfo, SetSoundSet),
                                          ORVO_OPERATION(IEditMetronomeInfo, SetPattern),
                                          ORVO_OPERATION(IEditMetronomeInfo, GetTrack)});
    Add<IEditMetronomeInfoPrivate, IEditMetronomeInfo>(
        {ORVO_OPERATION(IEditMetronomeInfoPrivate, GetGlobalTrackInfo)});
    Add<IQueryMetronomeInfo, IHostObject>({ORVO_OPERATION(IQueryMetronomeInfo, IsEnabled),
                                           ORVO_OPERATION(IQueryMetronomeInfo, GetSoundSet),
                                           ORVO_OPERATION(IQueryMetronomeInfo, GetPatternLength),
                                           ORVO_OPERATION(IQueryMetronomeInfo, GetPatternBeat),
                                           ORVO_OPERATION(IQueryMetronomeInfo, GetMetronomeTrack)});
    Add<IQueryMetronomeInfoPrivate, IQueryMetronomeInfo>(
        {ORVO_OPERATION(IQueryMetronomeInfoPrivate, GetGlobalTrackInfo)});
    Add<IEditProperties, IHostObject>({ORVO_OPERATION(IEditProperties, SetProperty)});
    Add<IQueryProperties, IHostObject>({ORVO_OPERATION(IQueryProperties, GetCount),
                                        ORVO_OPERATION(IQueryProperties, GetKey),
                                        ORVO_OPERATION(IQueryProperties, GetValue)});
    Add<IEditClipProperties, IHostObject>({ORVO_OPERATION(IEditClipProperties, SetProperties)});
    Add<IQueryClipProperties, IHostObject>({ORVO_OPERATION(IQueryClipProperties, GetPropertiesText),
                                            ORVO_OPERATION(IQueryClipProperties, IsEmpty)});
}

#undef ORVO_OPERATION

const Interfaces& Declared() {
    static const DeclaredInterfaces declared;
    return declared.Get();
}

// What the page says
// -------------------------------------------------------------------------------

struct Page {
    Interfaces interfaces;
    std::map<std::string, std::vector<std::size_t>> order;  // the slots as the rows have them
};

// The text between the back-quotes of a row "| 7 | `void SetSampleRate(uint32 value)` | ... |".
std::string_view QuotedText(std::string_view row) {
    const std::size_t start = row.find('`') + 1;
    return row.substr(start, row.find('`', start) - start);
}

Page ReadPage() {
    constexpr std::string_view kHeading = "### ";
    constexpr std::string_view kContinues = "Continues ";
    Page page;
    std::string name;
    std::ifstream file(ORVO_SOURCE_DIR "/docs/host-interfaces.md");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(kHeading)) {
            name = line.substr(kHeading.size());
            page.interfaces[name];
        } else if (line.starts_with(kContinues)) {
            page.interfaces[name].base =
                line.substr(kContinues.size(), line.find('.') - kContinues.size());
        } else if (line.starts_with("| ") && std::isdigit(line[2])) {
            const std::size_t slot = std::stoul(line.substr(2));
            page.interfaces[name].slots[WithoutParameterNames(QuotedText(line))] = slot;
            page.order[name].push_back(slot);
        }
    }
    return page;
}

const Page& Stated() {
    static const Page page = ReadPage();
    return page;
}

std::vector<std::string> Names(const Interfaces& interfaces) {
    std::vector<std::string> names;
    for (const auto& [name, interface] : interfaces) {
        names.push_back(name);
    }
    return names;
}

std::size_t SlotCount(const std::string& name) {
    if (name.empty()) {
        return 0;
    }
    const Interface& interface = Stated().interfaces.at(name);
    return SlotCount(interface.base) + Stated().order.at(name).size();
}

// The tests
// ----------------------------------------------------------------------------------------

TEST(SlotOrder, ThePageStatesExactlyTheInterfacesThatAreDeclared) {
    EXPECT_EQ(Names(Stated().interfaces), Names(Declared()));
}

// Neither the list above nor the page would miss an operation at the end of an interface.
TEST(SlotOrder, ThePageHasARowForEveryOperationOfTheHeaders) {
    std::size_t declared = 0;
    for (const auto& header : std::filesystem::directory_iterator(ORVO_SOURCE_DIR "/host")) {
        std::ifstream file(header.path());
        for (std::string line; std::getline(file, line);) {
            declared += line.ends_with(" = 0;") ? 1U : 0U;
        }
    }
    std::size_t stated = 0;
    for (const auto& [name, slots] : Stated().order) {
        stated += slots.size();
    }
    EXPECT_EQ(stated, declared);
}

class SlotOrderOf : public testing::TestWithParam<std::string> {};

TEST_P(SlotOrderOf, EveryOperationLandsInTheStatedSlot) {
    EXPECT_EQ(Declared().at(GetParam()).slots, Stated().interfaces.at(GetParam()).slots);
}

TEST_P(SlotOrderOf, TheStatedBaseIsTheDeclaredOne) {
    EXPECT_EQ(Declared().at(GetParam()).base, Stated().interfaces.at(GetParam()).base);
}

TEST_P(SlotOrderOf, TheStatedSlotsContinueThoseOfTheBaseWithoutAGap) {
    std::size_t slot = SlotCount(Stated().interfaces.at(GetParam()).base);
    for (const std::size_t stated : Stated().order.at(GetParam())) {
        EXPECT_EQ(stated, ++slot);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryInterface, SlotOrderOf, testing::ValuesIn(Names(Declared())),
                         [](const auto& each) { return each.param; });

}  // namespace
}  // namespace tses
