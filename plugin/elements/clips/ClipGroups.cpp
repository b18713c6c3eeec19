#include "plugin/elements/clips/ClipGroups.h"

#include "host/ClipGroups.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

// Clips, of any tracks, that are edited together:
//
//     <clipGroups>
//       <clipGroup hue="30" id="1">
//         <name>Chorus</name>
//         <item clipID="12" trackID="7"/> ...
//       </clipGroup>
//     </clipGroups>

namespace tses {
namespace {

struct GroupRecord {
    kelcore::uint32 id = 0;
    double hue = 0;
};

struct ItemRecord {
    kelcore::uint32 trackId = 0;
    kelcore::uint32 clipId = 0;
};

constexpr Binding<GroupRecord> kGroupBindings[] = {
    {names::hue, read::LenientDouble<&GroupRecord::hue>},
    {names::id, read::Number<&GroupRecord::id>},
};

constexpr Binding<ItemRecord> kItemBindings[] = {
    {names::clipID, read::Number<&ItemRecord::clipId>},
    {names::trackID, read::Number<&ItemRecord::trackId>},
};

}  // namespace

void Serializer::Impl::StartClipGroup(State state, const TagAttributes& attributes) {
    PushState(state);
    clips_.clipGroupName.clear();
    GroupRecord record;
    ReadAttributes<kGroupBindings>(attributes, record);
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
    ItemRecord record;
    ReadAttributes<kItemBindings>(attributes, record);
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

bool WriteName(SessionXMLWriter& writer, const std::u16string& name) {
    return writer.StartElement(names::name) && writer.Text(name) && writer.EndElement();
}

bool WriteItem(SessionXMLWriter& writer, IQueryClipGroup& group, kelcore::uint32 index) {
    ItemRecord item;
    group.GetItem(index, item.trackId, item.clipId);
    const AttributeMap attributes = {{names::trackID, FormatUnsigned(item.trackId)},
                                     {names::clipID, FormatUnsigned(item.clipId)}};
    return writer.StartElement(names::item, attributes) && writer.EndElement();
}

bool WriteItems(SessionXMLWriter& writer, IQueryClipGroup& group) {
    return ForEachItem(writer, group.GetItemCount(),
                       [&](kelcore::uint32 index) { return WriteItem(writer, group, index); });
}

bool WriteClipGroup(SessionXMLWriter& writer, IQueryClipGroup& group) {
    const AttributeMap attributes = {{names::id, FormatUnsigned(group.GetID())},
                                     {names::hue, FormatDouble(group.GetHue())}};
    return writer.StartElement(names::clipGroup, attributes) &&
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
