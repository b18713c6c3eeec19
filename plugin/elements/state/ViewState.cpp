#include "plugin/elements/state/Writers.h"

#include "format/state/SessionState.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

void Serializer::Impl::StartViewState(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<ViewRecord, kViewRows>(attributes);
    session_->SetViewState(record.horizontalStart, record.horizontalDuration,
                           record.trackControlsWidth, record.verticalScrollOffset);
}

// Writing

namespace {

ViewRecord QueryView(IQuerySession& session) {
    ViewRecord record;
    session.GetViewState(record.horizontalStart, record.horizontalDuration,
                         record.trackControlsWidth, record.verticalScrollOffset);
    return record;
}

}  // namespace

bool WriteViewState(SessionXMLWriter& writer, IQuerySession& session) {
    return writer.StartElement(names::viewState, ToAttributes<kViewRows>(QueryView(session))) &&
           writer.EndElement();
}

}  // namespace tses
