#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "format/Names.h"
#include "format/States.h"
#include "format/effects/Component.h"
#include "platform/kelcore/ReadObstacle.h"
#include "plugin/elements/clips/ReadState.h"
#include "plugin/elements/document/ReadState.h"
#include "plugin/elements/effects/ReadState.h"
#include "plugin/elements/state/ReadState.h"
#include "plugin/elements/tracks/ReadState.h"
#include "plugin/serializer/ElementTable.h"
#include "plugin/serializer/Serializer.h"
#include "plugin/xml/SAXHandlers.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

class SessionXMLReader;

/// The elements whose end is a step of a read's progress.
inline constexpr std::array progressMilestones = {
    names::session,     names::files,      names::tracks,     names::sessionState,
    names::xmpMetadata, names::clipGroups, names::audioDevice};
inline constexpr kelcore::uint32 kProgressTotal = progressMilestones.size();

/// Receives the events of a parse and hands each to the element that it belongs to. The handlers
/// are defined with their elements (plugin/elements); what they remember between events is in the
/// read states of their groups.
class Serializer::Impl final : SAXContentHandler, SAXErrorHandler {
public:
    Impl(WriterFault fault, DocumentMaker makeDocument);

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
                           const TagAttributes& attributes) override;
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
    std::optional<kelcore::ReadObstacle> FindObstacle() const;
    void SayWhyTheFileCannotBeRead() noexcept;

    // Common to all elements
    ElementTable BuildElementTable();
    void Reset();
    void ClearReadState();
    void PushState(State state) { stateStack_.push_back(state); }
    void OnlyPush(State state, const TagAttributes& /*attributes*/) { PushState(state); }
    void AdvanceProgress();
    /// Decodes the text since the last start tag as a block.
    const std::vector<kelcore::byte>& CollectedBlock();

    // elements/document
    void StartSession(State state, const TagAttributes& attributes);
    void EndSession();
    void StartFile(State state, const TagAttributes& attributes);

    // elements/tracks
    void StartAudioDevice(State state, const TagAttributes& attributes);
    void StartInputPort(State state, const TagAttributes& attributes);
    void StartOutputPort(State state, const TagAttributes& attributes);
    void StartTrack(State state, const TagAttributes& attributes);
    void StartVideoTrack(State state, const TagAttributes& attributes);
    void StartTrackParameters(State state, const TagAttributes& attributes);
    void EndTrackName();
    void EndTrackParameters();
    void EndVideoTrackParameters();
    void StartTrackAudioParameters(State state, const TagAttributes& attributes);
    void EndTrackAudioParameters();
    void StartTrackInput(State state, const TagAttributes& attributes);
    void StartTrackOutput(State state, const TagAttributes& attributes);
    void StartTrackPanner(State state, const TagAttributes& attributes);
    void StartTrackComponent(State state, const TagAttributes& attributes);
    void EndTrackComponent();
    void StartSendList(State state, const TagAttributes& attributes);
    void StartSendSlot(State state, const TagAttributes& attributes);
    void StartSendComponent(State state, const TagAttributes& attributes);
    void StartTrackVisibilityPresets(State state, const TagAttributes& attributes);
    void EndTrackVisibilityPresets();
    void StartTrackVisibilityPreset(State state, const TagAttributes& attributes);
    void StartTrackVisibility(State state, const TagAttributes& attributes);

    // elements/effects
    void StartTrackEffectsRack(State state, const TagAttributes& attributes);
    void StartClipEffectsRack(State state, const TagAttributes& attributes);
    void ApplyRackAttributes(const TagAttributes& attributes);
    void StartRackComponent(State state, const TagAttributes& attributes);
    void StartSlot(State state, const TagAttributes& attributes);
    void StartSlotComponent(State state, const TagAttributes& attributes);
    void ApplyComponent(const ComponentRecord& record);
    void EndComponent();
    void EndPresetChunkData();
    void StartParameter(State state, const TagAttributes& attributes);
    void StartParameterKeyframes(State state, const TagAttributes& attributes);
    void StartParameterKeyframe(State state, const TagAttributes& attributes);
    void StartSlotChannelMap(State state, const TagAttributes& attributes);
    void StartSlotChannel(State state, const TagAttributes& attributes);
    void EndBusConfig();
    void StartTrackEditParameter(State state, const TagAttributes& attributes);
    void StartClipEditParameter(State state, const TagAttributes& attributes);

    // elements/clips
    void StartAudioClip(State state, const TagAttributes& attributes);
    void EndAudioClip();
    void StartClipComponent(State state, const TagAttributes& attributes);
    void StartFade(State state, const TagAttributes& attributes);
    void StartClipStretch(State state, const TagAttributes& attributes);
    void StartTake(State state, const TagAttributes& attributes);
    void StartClipProperties(State state, const TagAttributes& attributes);
    void StartClipChannel(State state, const TagAttributes& attributes);
    void StartMidiClip(State state, const TagAttributes& attributes);
    void EndMidiClip();
    void EndMidiEvents();
    void StartGlobalTrackInfo(State state, const TagAttributes& attributes);
    void EndTempoEvents();
    void EndTimeSignatureEvents();
    void EndKeySignatureEvents();
    void StartVideoClip(State state, const TagAttributes& attributes);
    void EndVideoClip();
    void StartVideoFormat(State state, const TagAttributes& attributes);
    void StartClipGroup(State state, const TagAttributes& attributes);
    void EndClipGroup();
    void EndClipGroupName();
    void StartClipGroupItem(State state, const TagAttributes& attributes);

    // elements/state
    void StartMetronome(State state, const TagAttributes& attributes);
    void StartSessionState(State state, const TagAttributes& attributes);
    void StartSelectionState(State state, const TagAttributes& attributes);
    void StartViewState(State state, const TagAttributes& attributes);
    void StartTimeFormatState(State state, const TagAttributes& attributes);
    void StartMixingOptionState(State state, const TagAttributes& attributes);
    void StartSessionProperties(State state, const TagAttributes& attributes);
    void StartProperty(State state, const TagAttributes& attributes);
    void EndProperty();
    void EndXmpMetadata();

    ElementTable elementTable_;
    std::vector<State> stateStack_;
    // The depth of the stack where an unknown element began; 0 outside of unknown elements.
    std::size_t skipDepth_ = 0;
    bool rootSeen_ = false;
    // The entries of the open elements; null for an element without one.
    std::vector<const ElementEntry*> openEntries_;
    // The character data since the last start tag.
    std::u16string characterBuffer_;
    // What CollectedBlock returns; kept for its capacity.
    std::vector<kelcore::byte> block_;

    DocumentReadState document_;
    TracksReadState tracks_;
    ClipsReadState clips_;
    EffectsReadState effects_;
    SavedStateReadState savedState_;

    std::u16string path_;
    std::u16string resolvedPath_;  // by name, if it is absolute; of the session that is read
    HostReference<IEditSession> session_;
    const SessionXMLReader* reader_ = nullptr;  // during a read
    bool couldNotOpenFile_ = false;             // although it exists
    kelcore::uint32 progressStep_ = 0;
    WriterFault writerFault_;
    DocumentMaker makeDocument_;
};

}  // namespace tses
