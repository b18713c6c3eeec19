#pragma once

#include <string_view>

#include "plugin/serializer/SerializerImpl.h"

namespace tses {

/// Access to parts of a serializer that are otherwise reachable only for the parser or not at all.
struct SerializerTestAccess {
    static SAXErrorHandler& Errors(Serializer::Impl& impl) { return impl; }
    static SAXContentHandler& Content(Serializer::Impl& impl) { return impl; }
    static const ElementTable& Table(const Serializer::Impl& impl) { return impl.elementTable_; }
    static void Attach(Serializer::Impl& impl, IEditSession* session) {
        impl.session_ = Retain(session);
    }
    static const std::u16string& Characters(const Serializer::Impl& impl) {
        return impl.characterBuffer_;
    }
    static const std::vector<State>& Stack(const Serializer::Impl& impl) {
        return impl.stateStack_;
    }
    static TracksReadState& Tracks(Serializer::Impl& impl) { return impl.tracks_; }
    static EffectsReadState& Effects(Serializer::Impl& impl) { return impl.effects_; }
    static void StartParameterKeyframe(Serializer::Impl& impl, const TagAttributes& attributes) {
        impl.StartParameterKeyframe(states::parameterKeyframe, attributes);
    }
    static SavedStateReadState& SavedState(Serializer::Impl& impl) { return impl.savedState_; }
};

}  // namespace tses
