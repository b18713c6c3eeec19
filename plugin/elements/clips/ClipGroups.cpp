#include "plugin/elements/clips/Writers.h"

#include "format/clips/ClipGroup.h"
#include "host/ClipGroups.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

namespace tses {

void Serializer::Impl::StartClipGroup(State state, const TagAttributes& attributes) {
    PushState(state);
    clips_.clipGroupName.clear();
    const auto record = ReadRecord<ClipGroupRecord, kClipGroupRows>(attributes);
    clips_.clipGroup = Retain(session_->CreateClipGroup(record.id));
    if (clips_.clipGroup) {
        clips_.clipGroup->SetHue(record.hue);
    }
}

void Serializer::Impl::EndClipGroupName() {
    clips_.clipGroupName = TrimWhitespace(characterBuffer_);
}

void Serializer::Impl::StartClipGroupItem(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<ClipGroupItemRecord, kClipGroupItemRows>(attributes);
    if (clips_.clipGroup) {
        clips_.clipGroup->AddItem(record.trackId, record.clipId);
    }
}

void Serializer::Impl::EndClipGroup() {
    if (clips_.clipGroup) {
        clips_.clipGroup->SetName(clips_.clipGroupName.c_str());
    }
}

// Writing

namespace {

bool WriteName(SessionXMLWriter& writer, std::u16string_view name) {
    return writer.StartElement(names::name) && writer.Text(name) && writer.EndElement();
}

bool WriteItem(SessionXMLWriter& writer, IQueryClipGroup& group, kelcore::uint32 index) {
    ClipGroupItemRecord item;
    group.GetItem(index, item.trackId, item.clipId);
    return writer.StartElement(names::item, ToAttributes<kClipGroupItemRows>(item)) &&
           writer.EndElement();
}

bool WriteItems(SessionXMLWriter& writer, IQueryClipGroup& group) {
    return ForEachItem(writer, group.GetItemCount(),
                       [&](kelcore::uint32 index) { return WriteItem(writer, group, index); });
}

bool WriteClipGroup(SessionXMLWriter& writer, IQueryClipGroup& group) {
    const ClipGroupRecord record{group.GetID(), group.GetHue()};
    return writer.StartElement(names::clipGroup, ToAttributes<kClipGroupRows>(record)) &&
           WriteName(writer, TextOf(group.GetName())) && WriteItems(writer, group) &&
           writer.EndElement();
}

}  // namespace

bool WriteClipGroups(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    const auto writeGroup = [&](kelcore::uint32 index) {
        const auto group = Retain(session->GetClipGroup(index));
        return !group || WriteClipGroup(writer, *group);
    };
    return writer.StartElement(names::clipGroups) &&
           ForEachItem(writer, session->GetClipGroupCount(), writeGroup) && writer.EndElement();
}

}  // namespace tses
