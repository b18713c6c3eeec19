#include "plugin/elements/clips/CommonClipAttributes.h"

namespace tses {
namespace {

kelcore::int64 WrappingSum(kelcore::int64 left, kelcore::int64 right) {
    return static_cast<kelcore::int64>(static_cast<kelcore::uint64>(left) +
                                       static_cast<kelcore::uint64>(right));
}

}  // namespace

kelcore::int64 DurationOf(const ClipRecord& record) {
    return static_cast<kelcore::int64>(static_cast<kelcore::uint64>(record.sourceOutPoint) -
                                       static_cast<kelcore::uint64>(record.sourceInPoint));
}

void SetEnds(kelcore::int64 duration, ClipRecord& record) {
    record.sourceOutPoint = WrappingSum(record.sourceInPoint, duration);
    record.endPoint = WrappingSum(record.startPoint, duration);
}

}  // namespace tses
