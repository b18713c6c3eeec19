#include "plugin/elements/clips/Writers.h"

#include "plugin/elements/clips/CommonClipAttributes.h"
#include "plugin/elements/effects/Component.h"
#include "plugin/elements/effects/EditParameter.h"
#include "plugin/elements/effects/Writers.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// Older documents call the element "clip". It is read in the same way and never written.

namespace tses {
namespace {

struct ComponentRow {
    std::u16string_view keyword;
    IEditComponent* (IEditAudioClip::*get)();
};
constexpr ComponentRow kComponents[] = {
    {kClipGain, &IEditAudioClip::GetClipGainComponent},
    {kClipMute, &IEditAudioClip::GetClipMuteComponent},
    {kClipPan, &IEditAudioClip::GetClipPanComponent},
};

// Reading

void Apply(const ClipRecord& record, IEditAudioClip& clip) {
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
    ReadAttributes<kClipRows, kAudioClipRows>(attributes, clips_.pending);
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
    const auto record = ReadControl<kClipComponents>(attributes);
    for (const ComponentRow& row : kComponents) {
        if (record.keyword == row.keyword) {
            effects_.component = clips_.audioClip ? Retain(((*clips_.audioClip).*row.get)())
                                                  : HostReference<IEditComponent>();
        }
    }
    ApplyComponent(record);
}

// Writing

namespace {

ClipRecord QueryClip(IQueryAudioClip& clip) {
    ClipRecord record;
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

bool WriteComponents(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return WriteKeywordComponent(writer, kClipGain, Retain(clip.GetClipGainComponent())) &&
           WriteKeywordComponent(writer, kClipMute, Retain(clip.GetClipMuteComponent())) &&
           WriteKeywordComponent(writer, kClipPan, Retain(clip.GetClipPanComponent()));
}

bool WriteAudioClip(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return writer.StartElement(names::audioClip,
                               ToAttributes<kClipRows, kAudioClipRows>(QueryClip(clip))) &&
           WriteClipProperties(writer, Retain(clip.GetProperties())) &&
           WriteEffectsRack(writer, Retain(clip.GetEffectsRack())) &&
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
