#include "plugin/elements/tracks/VideoTracks.h"

#include "plugin/elements/clips/VideoClips.h"
#include "plugin/elements/tracks/TrackParameters.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// A video track:
//
//     <videoTrack id="3" select="false"> <trackParameters/> <videoClip/> ... </videoTrack>
//
// "index" is read but never written, so that a video track loses its index: that is how the format
// stands.

namespace tses {
namespace {

constexpr Binding<PendingTrack> kBindings[] = {
    {names::id, read::Number<&PendingTrack::id>},
    {names::index, read::Number<&PendingTrack::index>},
    {names::select, read::StrictBool<&PendingTrack::select>},
};

}  // namespace

void Serializer::Impl::StartVideoTrack(State state, const TagAttributes& attributes) {
    PushState(state);
    tracks_.pending = {};
    ReadAttributes<kBindings>(attributes, tracks_.pending);
    tracks_.videoTrack = Retain(session_->GetVideoTrack(tracks_.pending.id));
    if (tracks_.videoTrack) {
        tracks_.videoTrack->SetIndex(tracks_.pending.index);
        tracks_.videoTrack->SetSelected(tracks_.pending.select);
    }
}

bool WriteVideoTrack(SessionXMLWriter& writer, IQueryVideoTrack& track) {
    const AttributeMap attributes = {{names::id, FormatUnsigned(track.GetId())},
                                     {names::select, FormatBool(track.IsSelected())}};
    return writer.StartElement(names::videoTrack, attributes) &&
           WriteTrackParameters(writer, track) && WriteVideoClips(writer, track) &&
           writer.EndElement();
}

}  // namespace tses
