#include "plugin/elements/clips/Writers.h"

#include "format/clips/Fade.h"
#include "host/Fades.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

void Apply(const FadeRecord& record, IEditClipFade& fade) {
    fade.SetStartPoint(record.startPoint);
    fade.SetEndPoint(record.endPoint);
    fade.SetType(record.type);
    fade.SetShape(record.shape);
    fade.SetCrossFadeLinkType(record.crossFadeLinkType);
}

}  // namespace

void Serializer::Impl::StartFade(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<FadeRecord, kFadeRows>(attributes);
    if (!clips_.audioClip) {
        return;
    }
    IEditAudioClip& clip = *clips_.audioClip;
    if (const auto fade = Retain(state == states::fadeOut ? clip.GetFadeOut() : clip.GetFadeIn())) {
        Apply(record, *fade);
    }
}

// Writing

namespace {

FadeRecord QueryFade(IQueryClipFade& fade) {
    FadeRecord record;
    record.startPoint = fade.GetStartPoint();
    record.endPoint = fade.GetEndPoint();
    record.type = fade.GetType();
    record.shape = fade.GetShape();
    record.crossFadeLinkType = fade.GetCrossFadeLinkType();
    return record;
}

bool WriteFade(SessionXMLWriter& writer, bool isFadeIn, const FadeRecord& record) {
    return writer.StartElement(isFadeIn ? names::fadeIn : names::fadeOut,
                               ToAttributes<kFadeRows>(record)) &&
           writer.EndElement();
}

bool WriteIfPresent(SessionXMLWriter& writer, bool isFadeIn, HostReference<IQueryClipFade> fade) {
    return !fade || WriteFade(writer, isFadeIn, QueryFade(*fade));
}

}  // namespace

bool WriteFades(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return WriteIfPresent(writer, true, Retain(clip.GetFadeIn())) &&
           WriteIfPresent(writer, false, Retain(clip.GetFadeOut()));
}

}  // namespace tses
