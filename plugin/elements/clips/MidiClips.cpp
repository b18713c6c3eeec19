#include "plugin/elements/clips/Writers.h"

#include <boost/bind/bind.hpp>

#include "plugin/elements/clips/CommonClipAttributes.h"
#include "plugin/elements/clips/EventBlock.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// The events are the host's own bytes. Text that cannot be decoded is silently ignored. A track
// lends its clip list for the duration of the call; the list is not counted.

namespace tses {

void Serializer::Impl::StartMidiClip(State state, const TagAttributes& attributes) {
    PushState(state);
    clips_.pending.Reset();
    ReadAttributes<kClipRows>(attributes, clips_.pending);
    IEditMIDIClipList* const list = tracks_.track ? tracks_.track->GetMIDIClipList() : nullptr;
    clips_.midiClip = list != nullptr ? Retain(list->CreateMIDIClip(clips_.pending.id))
                                      : HostReference<IEditMIDIClip>();
    if (clips_.midiClip) {
        ApplyCommonClipAttributes(clips_.pending, *clips_.midiClip);
    }
}

void Serializer::Impl::EndMidiClip() {
    clips_.midiClip.Reset();
}

void Serializer::Impl::EndMidiEvents() {
    const std::vector<kelcore::byte>& bytes = CollectedBlock();
    if (clips_.midiClip && !bytes.empty()) {
        clips_.midiClip->SetMIDIEvents(bytes.data(), static_cast<kelcore::uint32>(bytes.size()));
    }
}

// Writing

namespace {

bool WriteMidiClip(SessionXMLWriter& writer, IQueryMIDIClip& clip) {
    using namespace boost::placeholders;
    ClipRecord record;
    record.id = clip.GetID();
    QueryCommonClipAttributes(clip, record);
    if (!writer.StartElement(names::midiClip, ToAttributes<kClipRows>(record))) {
        return false;
    }
    WriteEventBlock(writer, names::midiEvents,
                    {boost::bind(&IQueryMIDIClip::GetMIDIEventsSize, &clip),
                     boost::bind(&IQueryMIDIClip::GetMIDIEvents, &clip, _1)});
    return writer.EndElement();
}

}  // namespace

bool WriteMidiClips(SessionXMLWriter& writer, IQueryAudioTrack& track) {
    IQueryMIDIClipList* const list = track.GetMIDIClipList();
    if (list == nullptr) {
        return true;
    }
    return ForEachItem(writer, list->GetCount(), [&](kelcore::uint32 index) {
        const auto clip = Retain(list->GetClip(index));
        return !clip || WriteMidiClip(writer, *clip);
    });
}

}  // namespace tses
