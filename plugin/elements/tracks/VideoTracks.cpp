#include "plugin/elements/tracks/Writers.h"

#include "format/tracks/Track.h"
#include "plugin/elements/clips/Writers.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

void Serializer::Impl::StartVideoTrack(State state, const TagAttributes& attributes) {
    PushState(state);
    tracks_.pending = {};
    TrackRecord& record = tracks_.pending.track;
    ReadAttributes<kVideoTrackRows>(attributes, record);
    tracks_.videoTrack = Retain(session_->GetVideoTrack(record.id));
    if (tracks_.videoTrack) {
        tracks_.videoTrack->SetIndex(record.index);
        tracks_.videoTrack->SetSelected(record.select);
    }
}

bool WriteVideoTrack(SessionXMLWriter& writer, IQueryVideoTrack& track) {
    TrackRecord record;
    record.id = track.GetId();
    record.select = track.IsSelected();
    return writer.StartElement(names::videoTrack, ToAttributes<kVideoTrackRows>(record)) &&
           WriteTrackParameters(writer, track) && WriteVideoClips(writer, track) &&
           writer.EndElement();
}

}  // namespace tses
