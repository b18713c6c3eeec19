#include "plugin/elements/state/MixingOptionState.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// How the session mixes by default:
//
//     <mixingOptionState defaultPanModeLogarithmic="false" panPower="-3"
//                        playOverlappingClips="false"/>

namespace tses {
namespace {

struct MixingRecord {
    bool panModeLogarithmic = false;
    double panPower = -3.0;
    bool playOverlappingClips = false;
};

constexpr Binding<MixingRecord> kBindings[] = {
    {names::defaultPanModeLogarithmic, read::LenientBool<&MixingRecord::panModeLogarithmic>},
    {names::panPower, read::LenientDouble<&MixingRecord::panPower>},
    {names::playOverlappingClips, read::LenientBool<&MixingRecord::playOverlappingClips>},
};

}  // namespace

void Serializer::Impl::StartMixingOptionState(State state, const TagAttributes& attributes) {
    PushState(state);
    MixingRecord record;
    ReadAttributes<kBindings>(attributes, record);
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

AttributeMap ToAttributes(const MixingRecord& record) {
    return {
        {names::defaultPanModeLogarithmic, FormatBool(record.panModeLogarithmic)},
        {names::panPower, FormatDouble(record.panPower)},
        {names::playOverlappingClips, FormatBool(record.playOverlappingClips)},
    };
}

}  // namespace

bool WriteMixingOptionState(SessionXMLWriter& writer, IQuerySession& session) {
    return writer.StartElement(names::mixingOptionState, ToAttributes(QueryMixing(session))) &&
           writer.EndElement();
}

}  // namespace tses
