#include "plugin/elements/clips/Writers.h"

#include "plugin/elements/clips/CommonClipAttributes.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

void Apply(const ClipRecord& record, IEditVideoClip& clip) {
    clip.SetFileID(record.fileId);
    ApplyCommonClipAttributes(record, clip);
    clip.SetOffline(record.offline);
    clip.SetZOrder(record.zOrder);
}

}  // namespace

void Serializer::Impl::StartVideoClip(State state, const TagAttributes& attributes) {
    PushState(state);
    clips_.pending.Reset();
    ReadAttributes<kClipRows, kVideoClipRows>(attributes, clips_.pending);
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

ClipRecord QueryClip(IQueryVideoClip& clip) {
    ClipRecord record;
    record.id = clip.GetID();
    record.fileId = clip.GetFileID();
    record.offline = clip.GetOffline();
    record.zOrder = clip.GetZOrder();
    QueryCommonClipAttributes(clip, record);
    return record;
}

bool WriteVideoClip(SessionXMLWriter& writer, IQueryVideoClip& clip) {
    return writer.StartElement(names::videoClip,
                               ToAttributes<kClipRows, kVideoClipRows>(QueryClip(clip))) &&
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
