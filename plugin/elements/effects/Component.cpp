#include "plugin/elements/effects/Component.h"

#include <optional>

#include "plugin/elements/effects/Parameter.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// The carrier of everything that can be automated: a clip's gain, a track's fader, a send's level,
// a rack's mix, every effect in a slot.
//
//     <component componentGuid="..." componentID="..." id="trackFader" name="..." powered="true"
//                presetName="..." editorVisible="true" editorLeft="10" editorTop="20"
//                editorWidth="400" editorHeight="300">
//       <parameter/> ...
//     </component>
//
// "id" and "powered" stand on the components with a keyword; an effect's component has neither, its
// slot says whether it is powered. Who owns a component opens it (tracks, sends, clips, racks,
// slots); what all of them then do with its attributes, and what its end does, is here.

namespace tses {
namespace {

/// The texts are the start tag's own, which end in a zero.
struct ComponentRecord {
    std::u16string_view guid = u"";
    std::u16string_view id = u"";
    std::u16string_view name = u"";
    std::u16string_view presetName = u"";
    std::optional<bool> powered;
    bool editorVisible = false;
    kelcore::int32 editorLeft = 0;
    kelcore::int32 editorTop = 0;
    kelcore::int32 editorWidth = 0;
    kelcore::int32 editorHeight = 0;
};

// Reading

void ReadPowered(std::u16string_view text, ComponentRecord& record) {
    record.powered = ParseBoolStrict(text);
}

constexpr Binding<ComponentRecord> kBindings[] = {
    {names::componentGuid, read::Text<&ComponentRecord::guid>},
    {names::componentID, read::Text<&ComponentRecord::id>},
    {names::editorHeight, read::Number<&ComponentRecord::editorHeight>},
    {names::editorLeft, read::Number<&ComponentRecord::editorLeft>},
    {names::editorTop, read::Number<&ComponentRecord::editorTop>},
    {names::editorVisible, read::StrictBool<&ComponentRecord::editorVisible>},
    {names::editorWidth, read::Number<&ComponentRecord::editorWidth>},
    {names::name, read::Text<&ComponentRecord::name>},
    {names::powered, ReadPowered},
    {names::presetName, read::Text<&ComponentRecord::presetName>},
};

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

void Serializer::Impl::ApplyComponentAttributes(const TagAttributes& attributes) {
    effects_.parameterIndices.clear();
    effects_.poweredApplied = false;
    if (!effects_.component) {
        return;
    }
    ComponentRecord record;
    ReadAttributes<kBindings>(attributes, record);
    Apply(record, *effects_.component);
    effects_.poweredApplied = record.powered.has_value();
}

void Serializer::Impl::EndComponent() {
    effects_.component.Reset();
}

// Writing

void QueryPresetAndVisibility(IQueryComponent& component, AttributeMap& attributes) {
    if (const auto preset = Retain(component.GetPreset())) {
        attributes.SetUnlessEmpty(names::presetName, TextOf(preset->GetName()));
    }
    if (component.IsEditorVisible()) {
        attributes.Set(names::editorVisible, FormatBool(true));
    }
}

void QueryEditorRect(IQueryComponent& component, AttributeMap& attributes) {
    kelcore::int32 left = 0;
    kelcore::int32 top = 0;
    kelcore::int32 width = 0;
    kelcore::int32 height = 0;
    component.GetEditorRect(left, top, width, height);
    if (width != 0 && height != 0) {
        attributes.Set(names::editorLeft, FormatSigned(left));
        attributes.Set(names::editorTop, FormatSigned(top));
        attributes.Set(names::editorWidth, FormatSigned(width));
        attributes.Set(names::editorHeight, FormatSigned(height));
    }
}

namespace {

AttributeMap QueryAttributes(std::u16string_view keyword, IQueryComponent& component) {
    AttributeMap attributes;
    attributes.Set(names::id, keyword);
    attributes.SetUnlessEmpty(names::componentGuid, TextOf(component.GetComponentGuid()));
    attributes.SetUnlessEmpty(names::componentID, TextOf(component.GetComponentID()));
    attributes.SetUnlessEmpty(names::name, TextOf(component.GetName()));
    QueryPresetAndVisibility(component, attributes);
    attributes.Set(names::powered, FormatBool(component.IsPowered()));
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
