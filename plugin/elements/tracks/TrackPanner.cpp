#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// An element of old files, inside "trackAudioParameters":
//
//     <trackPanner angle="0" panLeftRight="-0.3" radius="1" stereoSpread="0"> ... </trackPanner>
//
// It is read into the track's record and goes no further, and it is never written: the track's pan
// lives in its "trackPan" component. "balanceLeftRight" is another name of "panLeftRight", which
// wins over it, being the later one.

namespace tses {
namespace {

constexpr Binding<PendingTrack> kBindings[] = {
    {names::angle, read::LenientFloat<&PendingTrack::angle>},
    {names::balanceLeftRight, read::LenientFloat<&PendingTrack::panLeftRight>},
    {names::panLeftRight, read::LenientFloat<&PendingTrack::panLeftRight>},
    {names::radius, read::LenientFloat<&PendingTrack::radius>},
    {names::stereoSpread, read::LenientFloat<&PendingTrack::stereoSpread>},
};

}  // namespace

void Serializer::Impl::StartTrackPanner(State state, const TagAttributes& attributes) {
    PushState(state);
    ReadAttributes<kBindings>(attributes, tracks_.pending);
}

}  // namespace tses
