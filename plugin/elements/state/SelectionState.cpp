#include "plugin/elements/state/SelectionState.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// The selected time, in samples:
//
//     <selectionState selectionDuration="48000" selectionStart="-100"/>

namespace tses {
namespace {

struct SelectionRecord {
    kelcore::int64 start = 0;
    kelcore::int64 duration = 0;
};

constexpr Binding<SelectionRecord> kBindings[] = {
    {names::selectionDuration, read::Number<&SelectionRecord::duration>},
    {names::selectionStart, read::Number<&SelectionRecord::start>},
};

}  // namespace

void Serializer::Impl::StartSelectionState(State state, const TagAttributes& attributes) {
    PushState(state);
    SelectionRecord record;
    ReadAttributes<kBindings>(attributes, record);
    session_->SetSelection(record.start, record.duration);
    savedState_.selectionStart = record.start;
}

bool WriteSelectionState(SessionXMLWriter& writer, IQuerySession& session) {
    SelectionRecord record;
    session.GetSelection(record.start, record.duration);
    const AttributeMap attributes = {{names::selectionStart, FormatInt64(record.start)},
                                     {names::selectionDuration, FormatInt64(record.duration)}};
    return writer.StartElement(names::selectionState, attributes) && writer.EndElement();
}

}  // namespace tses
