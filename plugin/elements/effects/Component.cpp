#include "plugin/elements/effects/Component.h"

#include "plugin/elements/effects/Writers.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// Each owner of a component opens it: a track, a send, a clip, a rack or a slot. This file holds
// what they share: how the attributes are applied, and what the end tag does.

namespace tses {
namespace {

void Apply(const ComponentRecord& record, IEditComponent& component) {
    component.SetComponentGuid(record.guid.data());
    component.SetComponentID(record.id.data());
    component.SetName(record.name.data());
    component.SetPresetName(record.presetName.data());
    if (record.powered) {
        component.SetPowered(*record.powered);
    }
    component.SetEditorVisible(record.editorVisible);
    component.SetEditorRect(record.editorLeft, record.editorTop, record.editorWidth,
                            record.editorHeight);
}

}  // namespace

void Serializer::Impl::ApplyComponent(const ComponentRecord& record) {
    effects_.parameterIndices.clear();
    effects_.poweredApplied = false;
    if (effects_.component) {
        Apply(record, *effects_.component);
        effects_.poweredApplied = record.powered.has_value();
    }
}

void Serializer::Impl::EndComponent() {
    effects_.component.Reset();
}

// Writing

ComponentRecord QueryComponent(IQueryComponent& component, ComponentTexts& texts) {
    texts.guid = TextOf(component.GetComponentGuid());
    texts.id = TextOf(component.GetComponentID());
    texts.name = TextOf(component.GetName());
    if (const auto preset = Retain(component.GetPreset())) {
        texts.presetName = TextOf(preset->GetName());
    }
    ComponentRecord record;
    record.guid = texts.guid;
    record.id = texts.id;
    record.name = texts.name;
    record.presetName = texts.presetName;
    record.editorVisible = component.IsEditorVisible();
    return record;
}

void QueryEditorRect(IQueryComponent& component, AttributeMap& attributes) {
    ComponentRecord record;
    component.GetEditorRect(record.editorLeft, record.editorTop, record.editorWidth,
                            record.editorHeight);
    if (record.editorWidth != 0 && record.editorHeight != 0) {
        SetAttributes<kEditorRectRows>(record, attributes);
    }
}

namespace {

AttributeMap QueryAttributes(std::u16string_view keyword, IQueryComponent& component) {
    ComponentTexts texts;
    ComponentRecord record = QueryComponent(component, texts);
    record.powered = component.IsPowered();
    AttributeMap attributes = ToAttributes<kKeywordComponentRows>(record);
    attributes.Set(names::id, keyword);
    QueryEditorRect(component, attributes);
    return attributes;
}

}  // namespace

bool WriteKeywordComponent(SessionXMLWriter& writer, std::u16string_view keyword,
                           HostReference<IQueryComponent> component) {
    if (!component) {
        return true;
    }
    return writer.StartElement(names::component, QueryAttributes(keyword, *component)) &&
           WriteParameters(writer, *component) && writer.EndElement();
}

}  // namespace tses
