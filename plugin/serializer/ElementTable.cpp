#include "plugin/serializer/ElementTable.h"

#include <bit>
#include <boost/bind/bind.hpp>
#include <initializer_list>

#include "platform/kelappsupport/Features.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Names.h"
#include "plugin/xml/Text.h"

namespace tses {
namespace {

using Impl = Serializer::Impl;
using Parents = std::initializer_list<State>;

constexpr std::string_view kInstrumentTracksFeature = "Tembra.InstrumentTracks";

enum class Condition { Always, InstrumentTracks };

struct ElementRow {
    std::u16string_view name;
    Parents parents;
    State state;
    void (Impl::*onStart)(State state, const TagAttributes& attributes);
    void (Impl::*onEnd)() = nullptr;
    Condition condition = Condition::Always;
};

std::vector<ElementEntry> Bind(std::initializer_list<ElementRow> rows, Impl& impl) {
    using namespace boost::placeholders;
    const bool instrumentTracks = kelappsupport::IsFeatureEnabled(kInstrumentTracksFeature);
    std::vector<ElementEntry> entries;
    for (const ElementRow& row : rows) {
        if (row.condition == Condition::InstrumentTracks && !instrumentTracks) {
            continue;
        }
        for (const State parent : row.parents) {
            ElementEntry entry{
                row.name, parent, boost::bind(row.onStart, &impl, row.state, _2), {}};
            if (row.onEnd != nullptr) {
                entry.onEnd = boost::bind(row.onEnd, &impl);
            }
            entries.push_back(std::move(entry));
        }
    }
    return entries;
}

/// How many places there are for an entry, so that it is mostly found in its own.
constexpr std::size_t kSparseness = 4;

/// A number that most entries have to themselves, from what is at hand: the upper bits of a product
/// depend on all of it.
std::size_t PlaceOf(std::u16string_view name, State parentState) {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    const std::uint64_t ends =
        name.empty() ? 0 : std::uint64_t{name.front()} << 16 | std::uint64_t{name.back()};
    return (ends ^ std::uint64_t{parentState} << 32 ^ name.size() << 48) * kSpread >> 32;
}

}  // namespace

ElementTable::ElementTable(std::vector<ElementEntry> entries)
    : entries_(std::move(entries)), places_(std::bit_ceil(kSparseness * (entries_.size() + 1))) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        std::size_t place = PlaceOf(entries_[i].name, entries_[i].parentState);
        while (places_[place & (places_.size() - 1)] != 0) {
            ++place;
        }
        places_[place & (places_.size() - 1)] = static_cast<std::uint16_t>(i + 1);
    }
}

const ElementEntry* ElementTable::Find(std::u16string_view name, State parentState) const {
    for (std::size_t place = PlaceOf(name, parentState);; ++place) {
        const std::size_t number = places_[place & (places_.size() - 1)];
        if (number == 0) {
            return nullptr;
        }
        const ElementEntry& entry = entries_[number - 1];
        if (entry.parentState == parentState && IsSame(entry.name, name)) {
            return &entry;
        }
    }
}

// The whole tree of elements that the reader accepts: an element, the parents under which it
// stands, the State that it pushes, what its start and its end do, and whether it is there at all.
// The root is not in it: dispatch itself accepts it.
ElementTable Serializer::Impl::BuildElementTable() {
    using namespace states;
    const Parents soundingTrack = {masterTrack, busTrack, audioTrack, instrumentTrack,
                                   metronomeTrack};
    const Parents sendingTrack = {busTrack, audioTrack, instrumentTrack, metronomeTrack};
    constexpr auto withInstruments = Condition::InstrumentTracks;
    constexpr auto push = &Impl::OnlyPush;
    constexpr auto progress = &Impl::AdvanceProgress;

    // clang-format off
    return ElementTable(Bind({
        {names::session, {orvo}, session, &Impl::StartSession, &Impl::EndSession},
        {names::files, {orvo}, files, push, progress},
        {names::file, {files}, file, &Impl::StartFile},
        {names::audioDevice, {orvo}, audioDevice, &Impl::StartAudioDevice, progress},
        {names::inputPort, {audioDevice}, audioPort, &Impl::StartInputPort},
        {names::outputPort, {audioDevice}, audioPort, &Impl::StartOutputPort},
        {names::name, {session}, name, push},

        {names::tracks, {session}, tracks, push, progress},
        {names::masterTrack, {tracks}, masterTrack, &Impl::StartTrack},
        {names::audioTrack, {tracks}, audioTrack, &Impl::StartTrack},
        {names::instrumentTrack, {tracks}, instrumentTrack, &Impl::StartTrack, nullptr, withInstruments},
        {names::busTrack, {tracks}, busTrack, &Impl::StartTrack},
        {names::videoTrack, {tracks}, videoTrack, &Impl::StartVideoTrack},
        {names::trackParameters, soundingTrack, trackParameters, &Impl::StartTrackParameters, &Impl::EndTrackParameters},
        {names::trackParameters, {videoTrack}, trackParameters, &Impl::StartTrackParameters, &Impl::EndVideoTrackParameters},
        {names::name, {trackParameters}, name, push, &Impl::EndTrackName},
        {names::trackAudioParameters, soundingTrack, trackAudioParameters, &Impl::StartTrackAudioParameters, &Impl::EndTrackAudioParameters},
        {names::trackInput, {trackAudioParameters}, trackInput, &Impl::StartTrackInput},
        {names::trackOutput, {trackAudioParameters}, trackOutput, &Impl::StartTrackOutput},
        {names::trackPanner, {trackAudioParameters}, trackPanner, &Impl::StartTrackPanner},
        {names::fivePointOneLeft, {trackPanner}, fivePointOneLeft, push},
        {names::fivePointOneRight, {trackPanner}, fivePointOneRight, push},
        {names::fivePointOneCenter, {trackPanner}, fivePointOneCenter, push},
        {names::fivePointOneLeftSurround, {trackPanner}, fivePointOneLeftSurround, push},
        {names::fivePointOneRightSurround, {trackPanner}, fivePointOneRightSurround, push},
        {names::fivePointOneLFE, {trackPanner}, fivePointOneLFE, push},
        {names::component, {trackAudioParameters}, component, &Impl::StartTrackComponent, &Impl::EndTrackComponent},
        {names::sendList, sendingTrack, sendList, &Impl::StartSendList},
        {names::sendSlot, {sendList}, sendSlot, &Impl::StartSendSlot},
        {names::component, {sendSlot}, component, &Impl::StartSendComponent, &Impl::EndComponent},

        {names::effectsRack, soundingTrack, effectsRack, &Impl::StartTrackEffectsRack},
        {names::effectsRack, {audioClip}, effectsRack, &Impl::StartClipEffectsRack},
        {names::component, {effectsRack}, component, &Impl::StartRackComponent, &Impl::EndComponent},
        {names::slot, {effectsRack}, slot, &Impl::StartSlot},
        {names::component, {slot}, slotComponent, &Impl::StartSlotComponent, &Impl::EndComponent},
        {names::presetChunkData, {slotComponent}, presetChunkData, push, &Impl::EndPresetChunkData},
        {names::parameter, {component}, parameter, &Impl::StartParameter},
        {names::parameter, {slotComponent}, parameter, &Impl::StartParameter},
        {names::parameterKeyframes, {parameter}, parameterKeyframes, &Impl::StartParameterKeyframes},
        {names::parameterKeyframe, {parameterKeyframes}, parameterKeyframe, &Impl::StartParameterKeyframe},
        {names::channelMap, {slotComponent}, slotChannelMap, &Impl::StartSlotChannelMap},
        {names::channel, {slotChannelMap}, slotChannel, &Impl::StartSlotChannel},
        {names::busConfig, {slotComponent}, busConfig, push, &Impl::EndBusConfig},
        {names::editParameter, soundingTrack, editParameter, &Impl::StartTrackEditParameter},

        {names::clip, {audioTrack}, audioClip, &Impl::StartAudioClip, &Impl::EndAudioClip},
        {names::audioClip, {audioTrack}, audioClip, &Impl::StartAudioClip, &Impl::EndAudioClip},
        {names::midiClip, {instrumentTrack}, midiClip, &Impl::StartMidiClip, &Impl::EndMidiClip, withInstruments},
        {names::midiEvents, {midiClip}, midiEvents, push, &Impl::EndMidiEvents, withInstruments},
        {names::channelMap, {audioClip}, clipChannelMap, push},
        {names::channel, {clipChannelMap}, clipChannel, &Impl::StartClipChannel},
        {names::fadeIn, {audioClip}, fadeIn, &Impl::StartFade},
        {names::fadeOut, {audioClip}, fadeOut, &Impl::StartFade},
        {names::clipStretch, {audioClip}, clipStretch, &Impl::StartClipStretch},
        {names::take, {audioClip}, take, &Impl::StartTake},
        {names::editParameter, {audioClip}, editParameter, &Impl::StartClipEditParameter},
        {names::component, {audioClip}, component, &Impl::StartClipComponent, &Impl::EndComponent},
        {names::properties, {audioClip}, clipProperties, &Impl::StartClipProperties},
        {names::videoClip, {videoTrack}, videoClip, &Impl::StartVideoClip, &Impl::EndVideoClip},
        {names::videoFormat, {videoClip}, videoFormat, &Impl::StartVideoFormat},

        {names::metronome, {session}, metronome, &Impl::StartMetronome},
        {names::metronomeTrack, {metronome}, metronomeTrack, &Impl::StartTrack},
        {names::globalTrackInfo, {metronome}, globalTrackInfo, &Impl::StartGlobalTrackInfo, nullptr, withInstruments},
        {names::tempoEvents, {globalTrackInfo}, tempoEvents, push, &Impl::EndTempoEvents, withInstruments},
        {names::timeSignatureEvents, {globalTrackInfo}, timeSignatureEvents, push, &Impl::EndTimeSignatureEvents, withInstruments},
        {names::keySignatureEvents, {globalTrackInfo}, keySignatureEvents, push, &Impl::EndKeySignatureEvents, withInstruments},
        {names::xmpMetadata, {session}, xmpMetadata, push, &Impl::EndXmpMetadata},
        {names::sessionState, {session}, sessionState, &Impl::StartSessionState, progress},
        {names::selectionState, {sessionState}, selectionState, &Impl::StartSelectionState},
        {names::viewState, {sessionState}, viewState, &Impl::StartViewState},
        {names::timeFormatState, {sessionState}, timeFormatState, &Impl::StartTimeFormatState},
        {names::mixingOptionState, {sessionState}, mixingOptionState, &Impl::StartMixingOptionState},
        {names::clipGroups, {session}, clipGroups, push, progress},
        {names::clipGroup, {clipGroups}, clipGroup, &Impl::StartClipGroup, &Impl::EndClipGroup},
        {names::name, {clipGroup}, name, push, &Impl::EndClipGroupName},
        {names::item, {clipGroup}, clipGroupItem, &Impl::StartClipGroupItem},
        {names::properties, {session}, sessionProperties, &Impl::StartSessionProperties},
        {names::property, {sessionProperties}, property, &Impl::StartProperty, &Impl::EndProperty},
        {names::trackVisibilityPresets, {session}, trackVisibilityPresets, &Impl::StartTrackVisibilityPresets, &Impl::EndTrackVisibilityPresets},
        {names::trackVisibilityPreset, {trackVisibilityPresets}, trackVisibilityPreset, &Impl::StartTrackVisibilityPreset},
        {names::trackVisibility, {trackVisibilityPreset}, trackVisibility, &Impl::StartTrackVisibility},
    }, *this));
    // clang-format on
}

}  // namespace tses
