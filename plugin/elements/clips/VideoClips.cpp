#include "plugin/elements/clips/VideoClips.h"

#include "plugin/elements/clips/CommonClipAttributes.h"
#include "plugin/elements/clips/VideoFormat.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"

// A clip of a video track:
//
//     <videoClip endPoint="96000" fileID="4" hue="-1" id="12" lockedInTime="false" name="Scene 1"
//                offline="false" select="false" sourceInPoint="0" sourceOutPoint="96000"
//                startPoint="0" zOrder="0">
//       <videoFormat/>
//     </videoClip>
//
// It is read with the whole attribute set of an audio clip; looping and crossfades go no further.

namespace tses {
namespace {

void Apply(const PendingClipRecord& record, IEditVideoClip& clip) {
    clip.SetFileID(record.fileId);
    ApplyCommonClipAttributes(record, clip);
    clip.SetOffline(record.offline);
    clip.SetZOrder(record.zOrder);
}

}  // namespace

void Serializer::Impl::StartVideoClip(State state, const TagAttributes& attributes) {
    PushState(state);
    clips_.pending.Reset();
    ReadAudioClipAttributes(attributes, clips_.pending);
    clips_.videoClip = tracks_.videoTrack
                           ? Retain(tracks_.videoTrack->CreateVideoClip(clips_.pending.id))
                           : HostReference<IEditVideoClip>();
    if (clips_.videoClip) {
        Apply(clips_.pending, *clips_.videoClip);
    }
}

void Serializer::Impl::EndVideoClip() {
    clips_.videoClip.Reset();
}

// Writing

namespace {

PendingClipRecord QueryClip(IQueryVideoClip& clip) {
    PendingClipRecord record;
    record.id = clip.GetID();
    record.fileId = clip.GetFileID();
    record.offline = clip.GetOffline();
    record.zOrder = clip.GetZOrder();
    QueryCommonClipAttributes(clip, record);
    return record;
}

AttributeMap ToAttributes(const PendingClipRecord& record) {
    AttributeMap attributes;
    SetCommonClipAttributes(record, attributes);
    attributes.Set(names::fileID, FormatUnsigned(record.fileId));
    attributes.Set(names::offline, FormatBool(record.offline));
    attributes.Set(names::zOrder, FormatSigned(record.zOrder));
    return attributes;
}

bool WriteVideoClip(SessionXMLWriter& writer, IQueryVideoClip& clip) {
    return writer.StartElement(names::videoClip, ToAttributes(QueryClip(clip))) &&
           WriteVideoFormat(writer, Retain(clip.GetVideoFormat())) && writer.EndElement();
}

}  // namespace

bool WriteVideoClips(SessionXMLWriter& writer, IQueryVideoTrack& track) {
    return ForEachItem(writer, track.GetVideoClipCount(), [&](kelcore::uint32 index) {
        const auto clip = Retain(track.GetVideoClip(index));
        return !clip || WriteVideoClip(writer, *clip);
    });
}

}  // namespace tses
