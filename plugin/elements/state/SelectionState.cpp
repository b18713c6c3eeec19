#include "plugin/elements/state/Writers.h"

#include "format/state/SessionState.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

void Serializer::Impl::StartSelectionState(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<SelectionRecord, kSelectionRows>(attributes);
    session_->SetSelection(record.start, record.duration);
    savedState_.selectionStart = record.start;
}

bool WriteSelectionState(SessionXMLWriter& writer, IQuerySession& session) {
    SelectionRecord record;
    session.GetSelection(record.start, record.duration);
    return writer.StartElement(names::selectionState, ToAttributes<kSelectionRows>(record)) &&
           writer.EndElement();
}

}  // namespace tses
