#include "plugin/elements/clips/ClipChannelMap.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"

// Which channel of the media feeds each channel of a clip:
//
//     <channelMap>
//       <channel index="0" sourceIndex="1"/> <channel index="1" sourceIndex="0"/>
//     </channelMap>
//
// Reading collects the pairs and applies them, by ascending channel, when the clip ends. The first
// of two entries for one channel stands.

namespace tses {
namespace {

struct ChannelRecord {
    kelcore::uint32 index = 0;
    kelcore::int32 sourceIndex = 0;
};

constexpr Binding<ChannelRecord> kBindings[] = {
    {names::index, read::Number<&ChannelRecord::index>},
    {names::sourceIndex, read::Number<&ChannelRecord::sourceIndex>},
};

}  // namespace

void Serializer::Impl::StartClipChannel(State state, const TagAttributes& attributes) {
    PushState(state);
    ChannelRecord record;
    ReadAttributes<kBindings>(attributes, record);
    clips_.pending.channelMapEntries.emplace(record.index, record.sourceIndex);
}

// Writing

namespace {

bool WriteChannel(SessionXMLWriter& writer, IQueryAudioClip& clip, kelcore::uint32 channel) {
    const AttributeMap attributes = {
        {names::index, FormatUnsigned(channel)},
        {names::sourceIndex, FormatSigned(clip.GetChannelSource(channel))}};
    return writer.StartElement(names::channel, attributes) && writer.EndElement();
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
