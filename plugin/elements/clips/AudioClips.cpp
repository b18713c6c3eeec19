#include "plugin/elements/clips/AudioClips.h"

#include "plugin/elements/clips/ClipChannelMap.h"
#include "plugin/elements/clips/ClipProperties.h"
#include "plugin/elements/clips/ClipStretch.h"
#include "plugin/elements/clips/CommonClipAttributes.h"
#include "plugin/elements/clips/Fades.h"
#include "plugin/elements/clips/Takes.h"
#include "plugin/elements/effects/Component.h"
#include "plugin/elements/effects/EditParameter.h"
#include "plugin/elements/effects/EffectsRack.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"

// A region of a media file on an audio track:
//
//     <audioClip id="12" fileID="3" sourceInPoint="0" sourceOutPoint="48000" startPoint="48000"
//                endPoint="96000" hue="-1" name="Take 2" select="false" lockedInTime="false"
//                looped="false" offline="false" zOrder="0" crossFadeHeadClipID="-1"
//                crossFadeTailClipID="-1" clipAutoCrossfade="true">
//       <properties/> <effectsRack/>
//       <component id="clipGain"/> <component id="clipMute"/> <component id="clipPan"/>
//       <fadeIn/> <fadeOut/> <clipStretch/> <take/> ... <editParameter/> ... <channelMap/>
//     </audioClip>
//
// Older documents say "clip"; that is read as the same element and never written.

namespace tses {
namespace {

constexpr kelcore::uint32 kNoSlot = 4294967295;

constexpr std::u16string_view kGain = u"clipGain";
constexpr std::u16string_view kMute = u"clipMute";
constexpr std::u16string_view kPan = u"clipPan";

struct ComponentRow {
    std::u16string_view keyword;
    IEditComponent* (IEditAudioClip::*get)();
};
constexpr ComponentRow kComponents[] = {
    {kGain, &IEditAudioClip::GetClipGainComponent},
    {kMute, &IEditAudioClip::GetClipMuteComponent},
    {kPan, &IEditAudioClip::GetClipPanComponent},
};

// Reading

void Apply(const PendingClipRecord& record, IEditAudioClip& clip) {
    clip.SetFileID(record.fileId);
    clip.SetLooped(record.looped);
    clip.SetOffline(record.offline);
    clip.SetZOrder(record.zOrder);
    clip.SetCrossFadeHeadClipID(record.crossFadeHeadClipId);
    clip.SetCrossFadeTailClipID(record.crossFadeTailClipId);
    clip.SetClipAutoCrossfade(record.clipAutoCrossfade);
    ApplyCommonClipAttributes(record, clip);
}

}  // namespace

void Serializer::Impl::StartAudioClip(State state, const TagAttributes& attributes) {
    PushState(state);
    clips_.pending.Reset();
    ReadAudioClipAttributes(attributes, clips_.pending);
    clips_.audioClip = tracks_.track ? Retain(tracks_.track->CreateAudioClip(clips_.pending.id))
                                     : HostReference<IEditAudioClip>();
    if (clips_.audioClip) {
        Apply(clips_.pending, *clips_.audioClip);
    }
}

void Serializer::Impl::EndAudioClip() {
    if (clips_.audioClip) {
        for (const auto& [channel, source] : clips_.pending.channelMapEntries) {
            clips_.audioClip->SetChannelSource(channel, source);
        }
    }
    clips_.pending.channelMapEntries.clear();
    clips_.audioClip.Reset();
}

void Serializer::Impl::StartClipComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto id = attributes.Find(names::id);
    for (const ComponentRow& row : kComponents) {
        if (id && *id == row.keyword) {
            effects_.component = clips_.audioClip ? Retain(((*clips_.audioClip).*row.get)())
                                                  : HostReference<IEditComponent>();
        }
    }
    ApplyComponentAttributes(attributes);
}

// Writing

namespace {

PendingClipRecord QueryClip(IQueryAudioClip& clip) {
    PendingClipRecord record;
    record.id = clip.GetID();
    record.fileId = clip.GetFileID();
    record.looped = clip.GetLooped();
    record.offline = clip.GetOffline();
    record.zOrder = clip.GetZOrder();
    record.crossFadeHeadClipId = clip.GetCrossFadeHeadClipID();
    record.crossFadeTailClipId = clip.GetCrossFadeTailClipID();
    record.clipAutoCrossfade = clip.GetClipAutoCrossfade();
    QueryCommonClipAttributes(clip, record);
    return record;
}

AttributeMap ToAttributes(const PendingClipRecord& record) {
    AttributeMap attributes;
    SetCommonClipAttributes(record, attributes);
    attributes.Set(names::fileID, FormatUnsigned(record.fileId));
    attributes.Set(names::looped, FormatBool(record.looped));
    attributes.Set(names::offline, FormatBool(record.offline));
    attributes.Set(names::zOrder, FormatSigned(record.zOrder));
    attributes.Set(names::crossFadeHeadClipID, FormatSigned(record.crossFadeHeadClipId));
    attributes.Set(names::crossFadeTailClipID, FormatSigned(record.crossFadeTailClipId));
    attributes.Set(names::clipAutoCrossfade, FormatBool(record.clipAutoCrossfade));
    return attributes;
}

bool WriteRack(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    const auto rack = Retain(clip.GetEffectsRack());
    return !rack || WriteEffectsRack(writer, *rack);
}

bool WriteComponents(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return WriteKeywordComponent(writer, kGain, Retain(clip.GetClipGainComponent())) &&
           WriteKeywordComponent(writer, kMute, Retain(clip.GetClipMuteComponent())) &&
           WriteKeywordComponent(writer, kPan, Retain(clip.GetClipPanComponent()));
}

bool WriteEditParameters(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return ForEachItem(writer, clip.GetEditParameterCount(), [&](kelcore::uint32 index) {
        kelcore::uint32 slotIndex = kNoSlot;
        kelcore::uint32 parameterIndex = 0;
        clip.GetEditParameter(index, slotIndex, parameterIndex);
        return slotIndex == kNoSlot || WriteEditParameter(writer, slotIndex, parameterIndex);
    });
}

bool WriteAudioClip(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return writer.StartElement(names::audioClip, ToAttributes(QueryClip(clip))) &&
           WriteClipProperties(writer, Retain(clip.GetProperties())) && WriteRack(writer, clip) &&
           WriteComponents(writer, clip) && WriteFades(writer, clip) &&
           WriteClipStretch(writer, Retain(clip.GetClipStretch())) && WriteTakes(writer, clip) &&
           WriteEditParameters(writer, clip) && WriteClipChannelMap(writer, clip) &&
           writer.EndElement();
}

}  // namespace

bool WriteAudioClips(SessionXMLWriter& writer, IQueryAudioTrack& track) {
    return ForEachItem(writer, track.GetClipCount(), [&](kelcore::uint32 index) {
        const auto clip = Retain(track.GetClip(index));
        return !clip || WriteAudioClip(writer, *clip);
    });
}

}  // namespace tses
