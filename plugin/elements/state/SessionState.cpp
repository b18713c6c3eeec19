#include "plugin/elements/state/SessionState.h"

#include "plugin/elements/state/MixingOptionState.h"
#include "plugin/elements/state/SelectionState.h"
#include "plugin/elements/state/TimeFormatState.h"
#include "plugin/elements/state/ViewState.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// Where the editor stood:
//
//     <sessionState ctiPosition="96000" smpteStart="0">
//       <selectionState/> <viewState/> <timeFormatState/> <mixingOptionState/>
//     </sessionState>

namespace tses {
namespace {

struct SessionStateRecord {
    kelcore::int64 ctiPosition = 0;  // of the current-time indicator, in samples
    kelcore::int64 smpteStart = 0;   // in the host's unit
};

constexpr Binding<SessionStateRecord> kBindings[] = {
    {names::ctiPosition, read::Number<&SessionStateRecord::ctiPosition>},
    {names::smpteStart, read::Number<&SessionStateRecord::smpteStart>},
};

}  // namespace

void Serializer::Impl::StartSessionState(State state, const TagAttributes& attributes) {
    PushState(state);
    SessionStateRecord record;
    ReadAttributes<kBindings>(attributes, record);
    session_->SetCtiPosition(record.ctiPosition);
    session_->SetSmpteStart(record.smpteStart);
    savedState_.ctiPosition = record.ctiPosition;
}

// Writing

namespace {

SessionStateRecord QuerySessionState(IQuerySession& session) {
    SessionStateRecord record;
    session.GetCtiPosition(record.ctiPosition);
    session.GetSmpteStart(record.smpteStart);
    return record;
}

AttributeMap ToAttributes(const SessionStateRecord& record) {
    return {{names::ctiPosition, FormatInt64(record.ctiPosition)},
            {names::smpteStart, FormatInt64(record.smpteStart)}};
}

}  // namespace

bool WriteSessionState(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    return writer.StartElement(names::sessionState, ToAttributes(QuerySessionState(*session))) &&
           WriteSelectionState(writer, *session) && WriteViewState(writer, *session) &&
           WriteTimeFormatState(writer, *session) && WriteMixingOptionState(writer, *session) &&
           writer.EndElement();
}

}  // namespace tses
