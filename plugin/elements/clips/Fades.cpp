#include "plugin/elements/clips/Fades.h"

#include "host/Fades.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/serializer/Keywords.h"
#include "plugin/serializer/SerializerImpl.h"

// How a clip begins and ends, and where clips overlap, how they cross:
//
//     <fadeIn startPoint="0" endPoint="4800" type="log" shape="0"
//             crossFadeLinkType="linkedSymmetric"/>
//     <fadeOut .../>
//
// Both keywords are read as the first of their two for its exact text only: a misspelt curve is a
// cosine, not the default.

namespace tses {
namespace {

struct FadeRecord {
    kelcore::int64 startPoint = 0;
    kelcore::int64 endPoint = 0;
    kelcore::uint32 type = 0;
    kelcore::int32 shape = 0;
    kelcore::uint32 crossFadeLinkType = 0;
};

constexpr Keyword<kelcore::uint32> kTypes[] = {{u"log", 0}, {u"cosine", 1}};
constexpr Keyword<kelcore::uint32> kLinkTypes[] = {{u"linkedSymmetric", 0},
                                                   {u"linkedAsymmetric", 1}};

// Reading

void ReadType(std::u16string_view text, FadeRecord& record) {
    record.type = FindValue(kTypes, text).value_or(1);
}

void ReadLinkType(std::u16string_view text, FadeRecord& record) {
    record.crossFadeLinkType = FindValue(kLinkTypes, text).value_or(1);
}

constexpr Binding<FadeRecord> kBindings[] = {
    {names::crossFadeLinkType, ReadLinkType},
    {names::endPoint, read::Number<&FadeRecord::endPoint>},
    {names::shape, read::Number<&FadeRecord::shape>},
    {names::startPoint, read::Number<&FadeRecord::startPoint>},
    {names::type, ReadType},
};

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
    FadeRecord record;
    ReadAttributes<kBindings>(attributes, record);
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

AttributeMap ToAttributes(const FadeRecord& record) {
    return {
        {names::startPoint, FormatInt64(record.startPoint)},
        {names::endPoint, FormatInt64(record.endPoint)},
        {names::type, std::u16string(FindKeyword(kTypes, record.type, kTypes[1].text))},
        {names::crossFadeLinkType,
         std::u16string(FindKeyword(kLinkTypes, record.crossFadeLinkType, kLinkTypes[1].text))},
        {names::shape, FormatSigned(record.shape)},
    };
}

bool WriteFade(SessionXMLWriter& writer, bool isFadeIn, const FadeRecord& record) {
    return writer.StartElement(isFadeIn ? names::fadeIn : names::fadeOut, ToAttributes(record)) &&
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
