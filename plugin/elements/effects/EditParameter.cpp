#include "plugin/elements/effects/EditParameter.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// Which parameter of which rack slot a track or clip shows for editing:
//
//     <editParameter parameterIndex="3" slotIndex="0"/>

namespace tses {
namespace {

struct EditParameterRecord {
    kelcore::uint32 slotIndex = 4294967295;
    kelcore::uint32 parameterIndex = 0;
};

constexpr Binding<EditParameterRecord> kBindings[] = {
    {names::parameterIndex, read::Number<&EditParameterRecord::parameterIndex>},
    {names::slotIndex, read::Number<&EditParameterRecord::slotIndex>},
};

/// A track's or a clip's; both call it the same.
template <class Owner>
void Apply(const TagAttributes& attributes, const HostReference<Owner>& owner) {
    if (owner) {
        EditParameterRecord record;
        ReadAttributes<kBindings>(attributes, record);
        owner->SetEditParameter(record.slotIndex, record.parameterIndex);
    }
}

}  // namespace

void Serializer::Impl::StartTrackEditParameter(State state, const TagAttributes& attributes) {
    PushState(state);
    Apply(attributes, tracks_.track);
}

void Serializer::Impl::StartClipEditParameter(State state, const TagAttributes& attributes) {
    PushState(state);
    Apply(attributes, clips_.audioClip);
}

bool WriteEditParameter(SessionXMLWriter& writer, kelcore::uint32 slotIndex,
                        kelcore::uint32 parameterIndex) {
    const AttributeMap attributes = {{names::slotIndex, FormatUnsigned(slotIndex)},
                                     {names::parameterIndex, FormatUnsigned(parameterIndex)}};
    return writer.StartElement(names::editParameter, attributes) && writer.EndElement();
}

}  // namespace tses
