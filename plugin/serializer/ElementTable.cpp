#include "plugin/serializer/ElementTable.h"

#include <algorithm>
#include <boost/bind/bind.hpp>
#include <initializer_list>

#include "platform/kelappsupport/Features.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Names.h"

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
    void (Impl::*onStart)(State state, const AttributeMap& attributes);
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

}  // namespace

ElementTable::ElementTable(std::vector<ElementEntry> entries) : entries_(std::move(entries)) {
    std::stable_sort(
        entries_.begin(), entries_.end(),
        [](const ElementEntry& left, const ElementEntry& right) { return left.name < right.name; });
}

const ElementEntry* ElementTable::Find(std::u16string_view name, State parentState) const {
    auto entry = std::lower_bound(entries_.begin(), entries_.end(), name,
                                  [](const ElementEntry& candidate, std::u16string_view sought) {
                                      return candidate.name < sought;
                                  });
    for (; entry != entries_.end() && entry->name == name; ++entry) {
        if (entry->parentState == parentState) {
            return &*entry;
        }
    }
    return nullptr;
}

// The whole tree of elements that the reader accepts: an element, the parents under which it
// stands, the State that it pushes, what its start and its end do, and whether it is there at all.
// The root is not in it: dispatch itself accepts it.
ElementTable Serializer::Impl::BuildElementTable() {
    using namespace states;
    const Parents anyTrack = {masterTrack,     busTrack,   audioTrack,
                              instrumentTrack, videoTrack, metronomeTrack};
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
        {names::masterTrack, {tracks}, masterTrack, push},
        {names::audioTrack, {tracks}, audioTrack, push},
        {names::instrumentTrack, {tracks}, instrumentTrack, push, nullptr, withInstruments},
        {names::busTrack, {tracks}, busTrack, push},
        {names::videoTrack, {tracks}, videoTrack, push},
        {names::trackParameters, anyTrack, trackParameters, push},
        {names::name, {trackParameters}, name, push},
        {names::trackAudioParameters, soundingTrack, trackAudioParameters, push},
        {names::trackInput, {trackAudioParameters}, trackInput, push},
        {names::trackOutput, {trackAudioParameters}, trackOutput, push},
        {names::trackPanner, {trackAudioParameters}, trackPanner, push},
        {names::fivePointOneLeft, {trackPanner}, fivePointOneLeft, push},
        {names::fivePointOneRight, {trackPanner}, fivePointOneRight, push},
        {names::fivePointOneCenter, {trackPanner}, fivePointOneCenter, push},
        {names::fivePointOneLeftSurround, {trackPanner}, fivePointOneLeftSurround, push},
        {names::fivePointOneRightSurround, {trackPanner}, fivePointOneRightSurround, push},
        {names::fivePointOneLFE, {trackPanner}, fivePointOneLFE, push},
        {names::component, {trackAudioParameters}, component, push},
        {names::sendList, sendingTrack, sendList, push},
        {names::sendSlot, {sendList}, sendSlot, push},
        {names::component, {sendSlot}, component, push},

        {names::effectsRack, soundingTrack, effectsRack, push},
        {names::effectsRack, {audioClip}, effectsRack, push},
        {names::component, {effectsRack}, component, push},
        {names::slot, {effectsRack}, slot, push},
        {names::component, {slot}, slotComponent, push},
        {names::presetChunkData, {slotComponent}, presetChunkData, push},
        {names::parameter, {component}, parameter, push},
        {names::parameter, {slotComponent}, parameter, push},
        {names::parameterKeyframes, {parameter}, parameterKeyframes, push},
        {names::parameterKeyframe, {parameterKeyframes}, parameterKeyframe, push},
        {names::channelMap, {slotComponent}, slotChannelMap, push},
        {names::channel, {slotChannelMap}, slotChannel, push},
        {names::busConfig, {slotComponent}, busConfig, push},
        {names::editParameter, soundingTrack, editParameter, push},

        {names::clip, {audioTrack}, audioClip, push},
        {names::audioClip, {audioTrack}, audioClip, push},
        {names::midiClip, {instrumentTrack}, midiClip, push, nullptr, withInstruments},
        {names::midiEvents, {midiClip}, midiEvents, push, nullptr, withInstruments},
        {names::channelMap, {audioClip}, clipChannelMap, push},
        {names::channel, {clipChannelMap}, clipChannel, push},
        {names::fadeIn, {audioClip}, fadeIn, push},
        {names::fadeOut, {audioClip}, fadeOut, push},
        {names::clipStretch, {audioClip}, clipStretch, push},
        {names::take, {audioClip}, take, push},
        {names::editParameter, {audioClip}, editParameter, push},
        {names::component, {audioClip}, component, push},
        {names::properties, {audioClip}, clipProperties, push},
        {names::videoClip, {videoTrack}, videoClip, push},
        {names::videoFormat, {videoClip}, videoFormat, push},

        {names::metronome, {session}, metronome, push},
        {names::metronomeTrack, {metronome}, metronomeTrack, push},
        {names::globalTrackInfo, {metronome}, globalTrackInfo, push, nullptr, withInstruments},
        {names::tempoEvents, {globalTrackInfo}, tempoEvents, push, nullptr, withInstruments},
        {names::timeSignatureEvents, {globalTrackInfo}, timeSignatureEvents, push, nullptr, withInstruments},
        {names::keySignatureEvents, {globalTrackInfo}, keySignatureEvents, push, nullptr, withInstruments},
        {names::xmpMetadata, {session}, xmpMetadata, push, progress},
        {names::sessionState, {session}, sessionState, push, progress},
        {names::selectionState, {sessionState}, selectionState, push},
        {names::viewState, {sessionState}, viewState, push},
        {names::timeFormatState, {sessionState}, timeFormatState, push},
        {names::mixingOptionState, {sessionState}, mixingOptionState, push},
        {names::clipGroups, {session}, clipGroups, push, progress},
        {names::clipGroup, {clipGroups}, clipGroup, push},
        {names::name, {clipGroup}, name, push},
        {names::item, {clipGroup}, clipGroupItem, push},
        {names::properties, {session}, sessionProperties, push},
        {names::property, {sessionProperties}, property, push},
        {names::trackVisibilityPresets, {session}, trackVisibilityPresets, push},
        {names::trackVisibilityPreset, {trackVisibilityPresets}, trackVisibilityPreset, push},
        {names::trackVisibility, {trackVisibilityPreset}, trackVisibility, push},
    }, *this));
    // clang-format on
}

}  // namespace tses
