#include "plugin/elements/effects/SlotRouting.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

// How an effect is wired, inside its component:
//
//     <busConfig><![CDATA[...]]></busConfig>
//     <channelMap direction="input"> <channel index="0" sourceIndex="1"/> ... </channelMap>
//     <channelMap direction="output"> ... </channelMap>
//
// The bus configuration is the host's own text and passes through unchanged, its blanks included;
// one of nothing but blanks is none. A map is an output map unless "direction" is exactly "input".

namespace tses {
namespace {

constexpr std::u16string_view kInput = u"input";
constexpr std::u16string_view kOutput = u"output";

struct ChannelRecord {
    kelcore::int32 index = 0;
    kelcore::int32 sourceIndex = 0;
};

constexpr Binding<ChannelRecord> kChannelBindings[] = {
    {names::index, read::Number<&ChannelRecord::index>},
    {names::sourceIndex, read::Number<&ChannelRecord::sourceIndex>},
};

}  // namespace

void Serializer::Impl::EndBusConfig() {
    if (effects_.slot && !TrimWhitespace(characterBuffer_).empty()) {
        effects_.slot->SetBusConfig(characterBuffer_.c_str());
    }
}

void Serializer::Impl::StartSlotChannelMap(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto direction = attributes.Find(names::direction);
    effects_.readsInputChannels = direction && *direction == kInput;
}

void Serializer::Impl::StartSlotChannel(State state, const TagAttributes& attributes) {
    PushState(state);
    if (!effects_.slot || !attributes.Find(names::index)) {
        return;
    }
    ChannelRecord record;
    ReadAttributes<kChannelBindings>(attributes, record);
    if (effects_.readsInputChannels) {
        effects_.slot->AddInputChannel(record.index, record.sourceIndex);
    } else {
        effects_.slot->AddOutputChannel(record.index, record.sourceIndex);
    }
}

// Writing

namespace {

bool WriteBusConfig(SessionXMLWriter& writer, IQueryEffectsSlot& slot) {
    const std::u16string busConfig = TextOf(slot.GetBusConfig());
    return busConfig.empty() || (writer.StartElement(names::busConfig) &&
                                 writer.Characters(busConfig) && writer.EndElement());
}

struct Direction {
    std::u16string_view keyword;
    kelcore::uint32 (IQueryEffectsSlot::*count)();
    void (IQueryEffectsSlot::*get)(kelcore::uint32 position, kelcore::int32& index,
                                   kelcore::int32& sourceIndex);
};
constexpr Direction kInputMap = {kInput, &IQueryEffectsSlot::GetInputChannelCount,
                                 &IQueryEffectsSlot::GetInputChannel};
constexpr Direction kOutputMap = {kOutput, &IQueryEffectsSlot::GetOutputChannelCount,
                                  &IQueryEffectsSlot::GetOutputChannel};

bool WriteChannel(SessionXMLWriter& writer, IQueryEffectsSlot& slot, const Direction& direction,
                  kelcore::uint32 position) {
    ChannelRecord channel;
    (slot.*direction.get)(position, channel.index, channel.sourceIndex);
    const AttributeMap attributes = {{names::index, FormatSigned(channel.index)},
                                     {names::sourceIndex, FormatSigned(channel.sourceIndex)}};
    return writer.StartElement(names::channel, attributes) && writer.EndElement();
}

bool WriteChannelMap(SessionXMLWriter& writer, IQueryEffectsSlot& slot,
                     const Direction& direction) {
    const kelcore::uint32 count = (slot.*direction.count)();
    if (count == 0) {
        return true;
    }
    return writer.TakesChannels(count) &&
           writer.StartElement(names::channelMap,
                               {{names::direction, std::u16string(direction.keyword)}}) &&
           ForEachItem(writer, count,
                       [&](kelcore::uint32 position) {
                           return WriteChannel(writer, slot, direction, position);
                       }) &&
           writer.EndElement();
}

}  // namespace

bool WriteSlotRouting(SessionXMLWriter& writer, IQueryEffectsSlot& slot) {
    return WriteBusConfig(writer, slot) && WriteChannelMap(writer, slot, kInputMap) &&
           WriteChannelMap(writer, slot, kOutputMap);
}

}  // namespace tses
