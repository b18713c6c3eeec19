#include "plugin/elements/clips/CommonClipAttributes.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/xml/Names.h"

namespace tses {
namespace {

constexpr Binding<PendingClipRecord> kCommonBindings[] = {
    {names::endPoint, read::Number<&PendingClipRecord::endPoint>},
    {names::hue, read::LenientDouble<&PendingClipRecord::hue>},
    {names::id, read::Number<&PendingClipRecord::id>},
    {names::lockedInTime, read::StrictBool<&PendingClipRecord::lockedInTime>},
    {names::name, read::Text<&PendingClipRecord::name>},
    {names::select, read::StrictBool<&PendingClipRecord::selected>},
    {names::sourceInPoint, read::Number<&PendingClipRecord::sourceInPoint>},
    {names::sourceOutPoint, read::Number<&PendingClipRecord::sourceOutPoint>},
    {names::startPoint, read::Number<&PendingClipRecord::startPoint>},
};

constexpr Binding<PendingClipRecord> kAudioBindings[] = {
    {names::clipAutoCrossfade, read::StrictBool<&PendingClipRecord::clipAutoCrossfade>},
    {names::crossFadeHeadClipID, read::Number<&PendingClipRecord::crossFadeHeadClipId>},
    {names::crossFadeTailClipID, read::Number<&PendingClipRecord::crossFadeTailClipId>},
    {names::fileID, read::Number<&PendingClipRecord::fileId>},
    {names::looped, read::StrictBool<&PendingClipRecord::looped>},
    {names::offline, read::StrictBool<&PendingClipRecord::offline>},
    {names::zOrder, read::Number<&PendingClipRecord::zOrder>},
};

kelcore::int64 WrappingSum(kelcore::int64 left, kelcore::int64 right) {
    return static_cast<kelcore::int64>(static_cast<kelcore::uint64>(left) +
                                       static_cast<kelcore::uint64>(right));
}

}  // namespace

void ReadCommonClipAttributes(const TagAttributes& attributes, PendingClipRecord& record) {
    ReadAttributes<kCommonBindings>(attributes, record);
}

void ReadAudioClipAttributes(const TagAttributes& attributes, PendingClipRecord& record) {
    ReadCommonClipAttributes(attributes, record);
    ReadAttributes<kAudioBindings>(attributes, record);
}

kelcore::int64 DurationOf(const PendingClipRecord& record) {
    return static_cast<kelcore::int64>(static_cast<kelcore::uint64>(record.sourceOutPoint) -
                                       static_cast<kelcore::uint64>(record.sourceInPoint));
}

void SetEnds(kelcore::int64 duration, PendingClipRecord& record) {
    record.sourceOutPoint = WrappingSum(record.sourceInPoint, duration);
    record.endPoint = WrappingSum(record.startPoint, duration);
}

void SetCommonClipAttributes(const PendingClipRecord& record, AttributeMap& attributes) {
    attributes.Set(names::id, FormatUnsigned(record.id));
    attributes.Set(names::sourceInPoint, FormatInt64(record.sourceInPoint));
    attributes.Set(names::sourceOutPoint, FormatInt64(record.sourceOutPoint));
    attributes.Set(names::startPoint, FormatInt64(record.startPoint));
    attributes.Set(names::endPoint, FormatInt64(record.endPoint));
    attributes.Set(names::hue, FormatDouble(record.hue));
    attributes.Set(names::name, record.name);
    attributes.Set(names::select, FormatBool(record.selected));
    attributes.Set(names::lockedInTime, FormatBool(record.lockedInTime));
}

}  // namespace tses
