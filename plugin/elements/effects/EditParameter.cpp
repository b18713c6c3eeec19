#include "plugin/elements/effects/EditParameter.h"

#include "plugin/serializer/SerializerImpl.h"

// Which parameter of which rack slot a track or clip shows for editing.

namespace tses {
namespace {

/// The owner is a track or a clip; both have an operation of the same name.
template <class Owner>
void Apply(const TagAttributes& attributes, const HostReference<Owner>& owner) {
    if (owner) {
        const auto record = ReadRecord<EditParameterRecord, kEditParameterRows>(attributes);
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

}  // namespace tses
