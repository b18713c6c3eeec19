#include "plugin/serializer/ElementTable.h"

#include <algorithm>
#include <bit>
#include <boost/bind/bind.hpp>
#include <span>

#include "format/Elements.h"
#include "host/Features.h"
#include "platform/kelappsupport/Features.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

namespace tses {
namespace {

using Impl = Serializer::Impl;

/// What the start and the end of an element do. A row names the element by its name and any one of
/// its parents; the compiler looks the element up.
struct HandlerRow {
    const Element& element;
    void (Impl::*onStart)(State state, const TagAttributes& attributes);
    void (Impl::*onEnd)();

    consteval HandlerRow(std::u16string_view name, State parent,
                         void (Impl::*start)(State, const TagAttributes&),
                         void (Impl::*end)() = nullptr)
        : element(*FindElement(name, parent)), onStart(start), onEnd(end) {}
};

std::vector<ElementEntry> Bind(std::span<const HandlerRow> rows, Impl& impl) {
    using namespace boost::placeholders;
    const bool instrumentTracks = kelappsupport::IsFeatureEnabled(features::kInstrumentTracks);
    std::vector<ElementEntry> entries;
    for (const HandlerRow& row : rows) {
        const Element& element = row.element;
        if (element.needsInstrumentTracks && !instrumentTracks) {
            continue;
        }
        for (const State parent : element.parents) {
            ElementEntry entry{
                element.name, parent, boost::bind(row.onStart, &impl, element.state, _2), {}};
            if (row.onEnd != nullptr) {
                entry.onEnd = boost::bind(row.onEnd, &impl);
            }
            entries.push_back(std::move(entry));
        }
    }
    return entries;
}

/// Whether every element but the root, which dispatch itself accepts, has exactly one row.
consteval bool AreAllHandled(std::span<const HandlerRow> rows) {
    return std::ranges::all_of(kElements, [rows](const Element& element) {
        const auto isOfElement = [&element](const HandlerRow& row) {
            return &row.element == &element;
        };
        return std::ranges::count_if(rows, isOfElement) == (&element == &kRootElement ? 0 : 1);
    });
}

/// How many places the table has for each entry: enough that most searches end where they begin.
constexpr std::size_t kSparseness = 4;

/// Where the search for an entry begins. Cheap to compute, and different for most entries: the
/// upper bits of the product depend on every input.
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

ElementTable Serializer::Impl::BuildElementTable() {
    using namespace states;
    constexpr auto kPush = &Impl::OnlyPush;
    constexpr auto kProgress = &Impl::AdvanceProgress;

    // clang-format off
    static constexpr HandlerRow kRows[] = {
        {names::session, orvo, &Impl::StartSession, &Impl::EndSession},
        {names::files, orvo, kPush, kProgress},
        {names::file, files, &Impl::StartFile},
        {names::audioDevice, orvo, &Impl::StartAudioDevice, kProgress},
        {names::inputPort, audioDevice, &Impl::StartInputPort},
        {names::outputPort, audioDevice, &Impl::StartOutputPort},
        {names::name, session, kPush},
        {names::tracks, session, kPush, kProgress},
        {names::masterTrack, tracks, &Impl::StartTrack},
        {names::audioTrack, tracks, &Impl::StartTrack},
        {names::instrumentTrack, tracks, &Impl::StartTrack},
        {names::busTrack, tracks, &Impl::StartTrack},
        {names::videoTrack, tracks, &Impl::StartVideoTrack},
        {names::trackParameters, masterTrack, &Impl::StartTrackParameters, &Impl::EndTrackParameters},
        {names::trackParameters, videoTrack, &Impl::StartTrackParameters, &Impl::EndVideoTrackParameters},
        {names::name, trackParameters, kPush, &Impl::EndTrackName},
        {names::trackAudioParameters, masterTrack, &Impl::StartTrackAudioParameters, &Impl::EndTrackAudioParameters},
        {names::trackInput, trackAudioParameters, &Impl::StartTrackInput},
        {names::trackOutput, trackAudioParameters, &Impl::StartTrackOutput},
        {names::trackPanner, trackAudioParameters, &Impl::StartTrackPanner},
        {names::fivePointOneLeft, trackPanner, kPush},
        {names::fivePointOneRight, trackPanner, kPush},
        {names::fivePointOneCenter, trackPanner, kPush},
        {names::fivePointOneLeftSurround, trackPanner, kPush},
        {names::fivePointOneRightSurround, trackPanner, kPush},
        {names::fivePointOneLFE, trackPanner, kPush},
        {names::component, trackAudioParameters, &Impl::StartTrackComponent, &Impl::EndTrackComponent},
        {names::sendList, busTrack, &Impl::StartSendList},
        {names::sendSlot, sendList, &Impl::StartSendSlot},
        {names::component, sendSlot, &Impl::StartSendComponent, &Impl::EndComponent},
        {names::effectsRack, masterTrack, &Impl::StartTrackEffectsRack},
        {names::effectsRack, audioClip, &Impl::StartClipEffectsRack},
        {names::component, effectsRack, &Impl::StartRackComponent, &Impl::EndComponent},
        {names::slot, effectsRack, &Impl::StartSlot},
        {names::component, slot, &Impl::StartSlotComponent, &Impl::EndComponent},
        {names::presetChunkData, slotComponent, kPush, &Impl::EndPresetChunkData},
        {names::parameter, component, &Impl::StartParameter},
        {names::parameterKeyframes, parameter, &Impl::StartParameterKeyframes},
        {names::parameterKeyframe, parameterKeyframes, &Impl::StartParameterKeyframe},
        {names::channelMap, slotComponent, &Impl::StartSlotChannelMap},
        {names::channel, slotChannelMap, &Impl::StartSlotChannel},
        {names::busConfig, slotComponent, kPush, &Impl::EndBusConfig},
        {names::editParameter, masterTrack, &Impl::StartTrackEditParameter},
        {names::clip, audioTrack, &Impl::StartAudioClip, &Impl::EndAudioClip},
        {names::audioClip, audioTrack, &Impl::StartAudioClip, &Impl::EndAudioClip},
        {names::midiClip, instrumentTrack, &Impl::StartMidiClip, &Impl::EndMidiClip},
        {names::midiEvents, midiClip, kPush, &Impl::EndMidiEvents},
        {names::channelMap, audioClip, kPush},
        {names::channel, clipChannelMap, &Impl::StartClipChannel},
        {names::fadeIn, audioClip, &Impl::StartFade},
        {names::fadeOut, audioClip, &Impl::StartFade},
        {names::clipStretch, audioClip, &Impl::StartClipStretch},
        {names::take, audioClip, &Impl::StartTake},
        {names::editParameter, audioClip, &Impl::StartClipEditParameter},
        {names::component, audioClip, &Impl::StartClipComponent, &Impl::EndComponent},
        {names::properties, audioClip, &Impl::StartClipProperties},
        {names::videoClip, videoTrack, &Impl::StartVideoClip, &Impl::EndVideoClip},
        {names::videoFormat, videoClip, &Impl::StartVideoFormat},
        {names::metronome, session, &Impl::StartMetronome},
        {names::metronomeTrack, metronome, &Impl::StartTrack},
        {names::globalTrackInfo, metronome, &Impl::StartGlobalTrackInfo},
        {names::tempoEvents, globalTrackInfo, kPush, &Impl::EndTempoEvents},
        {names::timeSignatureEvents, globalTrackInfo, kPush, &Impl::EndTimeSignatureEvents},
        {names::keySignatureEvents, globalTrackInfo, kPush, &Impl::EndKeySignatureEvents},
        {names::xmpMetadata, session, kPush, &Impl::EndXmpMetadata},
        {names::sessionState, session, &Impl::StartSessionState, kProgress},
        {names::selectionState, sessionState, &Impl::StartSelectionState},
        {names::viewState, sessionState, &Impl::StartViewState},
        {names::timeFormatState, sessionState, &Impl::StartTimeFormatState},
        {names::mixingOptionState, sessionState, &Impl::StartMixingOptionState},
        {names::clipGroups, session, kPush, kProgress},
        {names::clipGroup, clipGroups, &Impl::StartClipGroup, &Impl::EndClipGroup},
        {names::name, clipGroup, kPush, &Impl::EndClipGroupName},
        {names::item, clipGroup, &Impl::StartClipGroupItem},
        {names::properties, session, &Impl::StartSessionProperties},
        {names::property, sessionProperties, &Impl::StartProperty, &Impl::EndProperty},
        {names::trackVisibilityPresets, session, &Impl::StartTrackVisibilityPresets, &Impl::EndTrackVisibilityPresets},
        {names::trackVisibilityPreset, trackVisibilityPresets, &Impl::StartTrackVisibilityPreset},
        {names::trackVisibility, trackVisibilityPreset, &Impl::StartTrackVisibility},
    };
    // clang-format on
    static_assert(AreAllHandled(kRows));
    return ElementTable(Bind(kRows, *this));
}

}  // namespace tses
