#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/elements/clips/ReadState.h"
#include "plugin/elements/document/ReadState.h"
#include "plugin/elements/effects/ReadState.h"
#include "plugin/elements/state/ReadState.h"
#include "plugin/elements/tracks/ReadState.h"
#include "plugin/serializer/ElementTable.h"
#include "plugin/serializer/Serializer.h"
#include "plugin/serializer/States.h"
#include "plugin/xml/Names.h"
#include "plugin/xml/SAXHandlers.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// The elements whose end is a step of a read's progress.
inline constexpr std::array progressMilestones = {
    names::session,     names::files,      names::tracks,     names::sessionState,
    names::xmpMetadata, names::clipGroups, names::audioDevice};
inline constexpr kelcore::uint32 kProgressTotal = progressMilestones.size();

/// Receives the events of a parse and hands each to the element that it belongs to. The handlers'
/// bodies stand in their elements' rooms (plugin/elements); what they remember between events, in
/// their groups' read states.
class Serializer::Impl final : SAXContentHandler, SAXErrorHandler {
public:
    explicit Impl(WriterFault fault);

    bool Read(const std::u16string& path, HostReference<IEditSession> session);
    bool Write(const std::u16string& path, HostReference<IQuerySession> session);

private:
    friend struct SerializerTestAccess;
    class ReadScope;

    // Dispatch
    void StartDocument() override;
    void EndDocument() override;
    void StartElementEvent(std::u16string_view uri, std::u16string_view localName,
                           std::u16string_view qualifiedName,
                           const AttributeMap& attributes) override;
    void EndElementEvent(std::u16string_view uri, std::u16string_view localName,
                         std::u16string_view qualifiedName) override;
    void CharactersEvent(std::u16string_view text) override;

    // Diagnostics
    void Warning(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
                 std::u16string_view systemId, std::u16string_view message) override;
    void Error(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
               std::u16string_view systemId, std::u16string_view message) override;
    void FatalError(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
                    std::u16string_view systemId, std::u16string_view message) override;
    bool Log(std::u16string text);

    // Common to all elements
    ElementTable BuildElementTable();
    void Reset();
    void ClearReadState();
    void PushState(State state) { stateStack_.push_back(state); }
    void OnlyPush(State state, const AttributeMap& /*attributes*/) { PushState(state); }
    void AdvanceProgress();

    // elements/document
    void StartSession(State state, const AttributeMap& attributes);
    void EndSession();
    void StartFile(State state, const AttributeMap& attributes);

    // elements/tracks
    void StartAudioDevice(State state, const AttributeMap& attributes);
    void StartInputPort(State state, const AttributeMap& attributes);
    void StartOutputPort(State state, const AttributeMap& attributes);
    void StartTrack(State state, const AttributeMap& attributes);
    void StartVideoTrack(State state, const AttributeMap& attributes);
    void StartTrackParameters(State state, const AttributeMap& attributes);
    void EndTrackName();
    void EndTrackParameters();
    void EndVideoTrackParameters();
    void StartTrackAudioParameters(State state, const AttributeMap& attributes);
    void EndTrackAudioParameters();
    void StartTrackInput(State state, const AttributeMap& attributes);
    void StartTrackOutput(State state, const AttributeMap& attributes);
    void StartTrackPanner(State state, const AttributeMap& attributes);
    void StartTrackComponent(State state, const AttributeMap& attributes);
    void EndTrackComponent();
    void StartSendList(State state, const AttributeMap& attributes);
    void StartSendSlot(State state, const AttributeMap& attributes);
    void StartSendComponent(State state, const AttributeMap& attributes);
    void StartTrackVisibilityPresets(State state, const AttributeMap& attributes);
    void EndTrackVisibilityPresets();
    void StartTrackVisibilityPreset(State state, const AttributeMap& attributes);
    void StartTrackVisibility(State state, const AttributeMap& attributes);

    // elements/effects
    void StartTrackEffectsRack(State state, const AttributeMap& attributes);
    void StartClipEffectsRack(State state, const AttributeMap& attributes);
    void ApplyRackAttributes(const AttributeMap& attributes);
    void StartRackComponent(State state, const AttributeMap& attributes);
    void StartSlot(State state, const AttributeMap& attributes);
    void StartSlotComponent(State state, const AttributeMap& attributes);
    void ApplyComponentAttributes(const AttributeMap& attributes);
    void EndComponent();
    void EndPresetChunkData();
    void StartParameter(State state, const AttributeMap& attributes);
    void StartParameterKeyframes(State state, const AttributeMap& attributes);
    void StartParameterKeyframe(State state, const AttributeMap& attributes);
    void StartSlotChannelMap(State state, const AttributeMap& attributes);
    void StartSlotChannel(State state, const AttributeMap& attributes);
    void EndBusConfig();
    void StartTrackEditParameter(State state, const AttributeMap& attributes);
    void StartClipEditParameter(State state, const AttributeMap& attributes);

    // elements/clips
    void StartAudioClip(State state, const AttributeMap& attributes);
    void EndAudioClip();
    void StartClipComponent(State state, const AttributeMap& attributes);
    void StartFade(State state, const AttributeMap& attributes);
    void StartClipStretch(State state, const AttributeMap& attributes);
    void StartTake(State state, const AttributeMap& attributes);
    void StartClipProperties(State state, const AttributeMap& attributes);
    void StartClipChannel(State state, const AttributeMap& attributes);
    void StartMidiClip(State state, const AttributeMap& attributes);
    void EndMidiClip();
    void EndMidiEvents();
    void StartGlobalTrackInfo(State state, const AttributeMap& attributes);
    void EndTempoEvents();
    void EndTimeSignatureEvents();
    void EndKeySignatureEvents();
    void StartVideoClip(State state, const AttributeMap& attributes);
    void EndVideoClip();
    void StartVideoFormat(State state, const AttributeMap& attributes);
    void StartClipGroup(State state, const AttributeMap& attributes);
    void EndClipGroup();
    void EndClipGroupName();
    void StartClipGroupItem(State state, const AttributeMap& attributes);

    // elements/state
    void StartMetronome(State state, const AttributeMap& attributes);
    void StartSessionState(State state, const AttributeMap& attributes);
    void StartSelectionState(State state, const AttributeMap& attributes);
    void StartViewState(State state, const AttributeMap& attributes);
    void StartTimeFormatState(State state, const AttributeMap& attributes);
    void StartMixingOptionState(State state, const AttributeMap& attributes);
    void StartSessionProperties(State state, const AttributeMap& attributes);
    void StartProperty(State state, const AttributeMap& attributes);
    void EndProperty();
    void EndXmpMetadata();

    ElementTable elementTable_;
    std::vector<State> stateStack_;
    std::size_t skipDepth_ =
        0;  // the stack's depth at which an unknown element was entered; 0: in none
    bool rootSeen_ = false;
    std::u16string characterBuffer_;  // the character data since the last start tag

    DocumentReadState document_;
    TracksReadState tracks_;
    ClipsReadState clips_;
    EffectsReadState effects_;
    SavedStateReadState savedState_;

    std::u16string path_;
    HostReference<IEditSession> session_;
    kelcore::uint32 progressStep_ = 0;
    WriterFault writerFault_;
};

}  // namespace tses
