#include "plugin/elements/state/Writers.h"

#include "format/state/SessionState.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

void Serializer::Impl::StartSessionState(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<SessionStateRecord, kSessionStateRows>(attributes);
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

}  // namespace

bool WriteSessionState(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    return writer.StartElement(names::sessionState,
                               ToAttributes<kSessionStateRows>(QuerySessionState(*session))) &&
           WriteSelectionState(writer, *session) && WriteViewState(writer, *session) &&
           WriteTimeFormatState(writer, *session) && WriteMixingOptionState(writer, *session) &&
           writer.EndElement();
}

}  // namespace tses
