#include "plugin/elements/state/ViewState.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// What of the session is in sight, in samples and in numbers of the host:
//
//     <viewState horizontalViewDuration="480000" horizontalViewStart="0" trackControlsWidth="220"
//                verticalScrollOffset="0"/>

namespace tses {
namespace {

struct ViewRecord {
    kelcore::int64 horizontalStart = 0;
    kelcore::int64 horizontalDuration = 0;
    kelcore::int32 trackControlsWidth = 0;
    kelcore::int32 verticalScrollOffset = 0;
};

constexpr Binding<ViewRecord> kBindings[] = {
    {names::horizontalViewDuration, read::Number<&ViewRecord::horizontalDuration>},
    {names::horizontalViewStart, read::Number<&ViewRecord::horizontalStart>},
    {names::trackControlsWidth, read::Number<&ViewRecord::trackControlsWidth>},
    {names::verticalScrollOffset, read::Number<&ViewRecord::verticalScrollOffset>},
};

}  // namespace

void Serializer::Impl::StartViewState(State state, const TagAttributes& attributes) {
    PushState(state);
    ViewRecord record;
    ReadAttributes<kBindings>(attributes, record);
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

AttributeMap ToAttributes(const ViewRecord& record) {
    return {
        {names::horizontalViewStart, FormatInt64(record.horizontalStart)},
        {names::horizontalViewDuration, FormatInt64(record.horizontalDuration)},
        {names::trackControlsWidth, FormatSigned(record.trackControlsWidth)},
        {names::verticalScrollOffset, FormatSigned(record.verticalScrollOffset)},
    };
}

}  // namespace

bool WriteViewState(SessionXMLWriter& writer, IQuerySession& session) {
    return writer.StartElement(names::viewState, ToAttributes(QueryView(session))) &&
           writer.EndElement();
}

}  // namespace tses
