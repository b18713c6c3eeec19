#include "format/tracks/TrackAudioParameters.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// The pan of a track in old files. It is read into the track's record but never reaches the host,
// and it is never written: the track's pan lives in its "trackPan" component.

namespace tses {

void Serializer::Impl::StartTrackPanner(State state, const TagAttributes& attributes) {
    PushState(state);
    ReadAttributes<kTrackPannerRows>(attributes, tracks_.pending.panner);
}

}  // namespace tses
