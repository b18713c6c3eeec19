#include "plugin/elements/clips/Writers.h"

#include "format/clips/ClipParts.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// Which channel of the media feeds each channel of a clip. Reading collects the pairs and applies
// them, by ascending channel, when the clip ends. If a channel has two entries, the first counts.

namespace tses {

void Serializer::Impl::StartClipChannel(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<ClipChannelRecord, kClipChannelRows>(attributes);
    clips_.pending.channelMapEntries.emplace(record.index, record.sourceIndex);
}

// Writing

namespace {

bool WriteChannel(SessionXMLWriter& writer, IQueryAudioClip& clip, kelcore::uint32 channel) {
    const ClipChannelRecord record{channel, clip.GetChannelSource(channel)};
    return writer.StartElement(names::channel, ToAttributes<kClipChannelRows>(record)) &&
           writer.EndElement();
}

}  // namespace

bool WriteClipChannelMap(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    const kelcore::uint32 count = clip.GetChannelCount();
    if (count == 0) {
        return true;
    }
    return writer.TakesChannels(count) && writer.StartElement(names::channelMap) &&
           ForEachItem(
               writer, count,
               [&](kelcore::uint32 channel) { return WriteChannel(writer, clip, channel); }) &&
           writer.EndElement();
}

}  // namespace tses
