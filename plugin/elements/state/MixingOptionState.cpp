#include "plugin/elements/state/Writers.h"

#include "format/state/SessionState.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

void Serializer::Impl::StartMixingOptionState(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<MixingRecord, kMixingRows>(attributes);
    session_->SetPanMode(record.panModeLogarithmic, record.panPower);
    session_->SetPlayOverlappingClips(record.playOverlappingClips);
}

// Writing

namespace {

MixingRecord QueryMixing(IQuerySession& session) {
    MixingRecord record;
    session.GetPanMode(record.panModeLogarithmic, record.panPower);
    record.playOverlappingClips = session.IsPlayOverlappingClips();
    return record;
}

}  // namespace

bool WriteMixingOptionState(SessionXMLWriter& writer, IQuerySession& session) {
    return writer.StartElement(names::mixingOptionState,
                               ToAttributes<kMixingRows>(QueryMixing(session))) &&
           writer.EndElement();
}

}  // namespace tses
