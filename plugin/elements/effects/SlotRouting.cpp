#include "plugin/elements/effects/Writers.h"

#include "format/effects/EffectsRack.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

// The bus configuration of an effect is the host's own text and passes through unchanged, with its
// white space. Reading ignores a text of nothing but white space.

namespace tses {
void Serializer::Impl::EndBusConfig() {
    if (effects_.slot && !TrimWhitespace(characterBuffer_).empty()) {
        effects_.slot->SetBusConfig(characterBuffer_.c_str());
    }
}

void Serializer::Impl::StartSlotChannelMap(State state, const TagAttributes& attributes) {
    PushState(state);
    effects_.channelMap = ReadRecord<ChannelMapRecord, kChannelMapRows>(attributes);
}

void Serializer::Impl::StartSlotChannel(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<SlotChannelRecord, kSlotChannelRows>(attributes);
    if (!effects_.slot || !record.index) {
        return;
    }
    if (effects_.channelMap.isInput) {
        effects_.slot->AddInputChannel(*record.index, record.sourceIndex);
    } else {
        effects_.slot->AddOutputChannel(*record.index, record.sourceIndex);
    }
}

// Writing

namespace {

bool WriteBusConfig(SessionXMLWriter& writer, IQueryEffectsSlot& slot) {
    const InlineText busConfig = TextOf(slot.GetBusConfig());
    return busConfig.empty() || (writer.StartElement(names::busConfig) &&
                                 writer.Characters(busConfig) && writer.EndElement());
}

struct Direction {
    ChannelMapRecord record;
    kelcore::uint32 (IQueryEffectsSlot::*count)();
    void (IQueryEffectsSlot::*get)(kelcore::uint32 position, kelcore::int32& index,
                                   kelcore::int32& sourceIndex);
};
constexpr Direction kInputMap = {{.isInput = true},
                                 &IQueryEffectsSlot::GetInputChannelCount,
                                 &IQueryEffectsSlot::GetInputChannel};
constexpr Direction kOutputMap = {{.isInput = false},
                                  &IQueryEffectsSlot::GetOutputChannelCount,
                                  &IQueryEffectsSlot::GetOutputChannel};

bool WriteChannel(SessionXMLWriter& writer, IQueryEffectsSlot& slot, const Direction& direction,
                  kelcore::uint32 position) {
    SlotChannelRecord channel{.index = 0};
    (slot.*direction.get)(position, *channel.index, channel.sourceIndex);
    return writer.StartElement(names::channel, ToAttributes<kSlotChannelRows>(channel)) &&
           writer.EndElement();
}

bool WriteChannelMap(SessionXMLWriter& writer, IQueryEffectsSlot& slot,
                     const Direction& direction) {
    const kelcore::uint32 count = (slot.*direction.count)();
    if (count == 0) {
        return true;
    }
    return writer.TakesChannels(count) &&
           writer.StartElement(names::channelMap,
                               ToAttributes<kChannelMapRows>(direction.record)) &&
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
