#pragma once

#include <algorithm>
#include <vector>

#include <orvo/MidiClip.h>
#include "host/MidiClips.h"
#include "reference_host/Node.h"

namespace refhost {

class EditMidiClip final : public Face<tses::IEditMIDIClip, orvo::MidiClip> {
public:
    using Face::Face;

    void SetMIDIEvents(const kelcore::byte* data, kelcore::uint32 size) override {
        Value().events.assign(data, data + size);
    }
    void SetSourceInPoint(kelcore::int64 sample) override { Value().sourceInPoint = sample; }
    void SetDuration(kelcore::int64 samples) override { Value().duration = samples; }
    void SetStartPoint(kelcore::int64 sample) override { Value().startPoint = sample; }
    void SetHue(double hue) override { Value().hue = hue; }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
    void SetSelected(bool selected) override { Value().selected = selected; }
    void SetLockedInTime(bool locked) override { Value().lockedInTime = locked; }
};

class QueryMidiClip final : public Face<tses::IQueryMIDIClip, orvo::MidiClip> {
public:
    using Face::Face;

    kelcore::uint32 GetID() override { return Value().id; }
    kelcore::uint32 GetMIDIEventsSize() override { return CountOf(Value().events); }
    bool GetMIDIEvents(kelcore::byte* buffer) override {
        std::ranges::copy(Value().events, buffer);
        return true;
    }
    kelcore::int64 GetSourceInPoint() override { return Value().sourceInPoint; }
    kelcore::int64 GetDuration() override { return Value().duration; }
    kelcore::int64 GetStartPoint() override { return Value().startPoint; }
    double GetHue() override { return Value().hue; }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    bool GetSelected() override { return Value().selected; }
    bool GetLockedInTime() override { return Value().lockedInTime; }
};

using MidiClipNode = TwoFacedNode<orvo::MidiClip, EditMidiClip, QueryMidiClip>;

/// The node of a clip in a list. The clip must exist.
inline MidiClipNode& MidiClipAt(DataNode<std::vector<orvo::MidiClip>>& list, std::size_t index) {
    return list.NodeAt<MidiClipNode>(
        nullptr, index,
        [index](std::vector<orvo::MidiClip>& clips) -> orvo::MidiClip& { return clips[index]; });
}

class EditMidiClipList final : public Face<tses::IEditMIDIClipList, std::vector<orvo::MidiClip>> {
public:
    using Face::Face;

    tses::IEditMIDIClip* CreateMIDIClip(kelcore::uint32 id) override {
        Owner().ReportPart();
        Value().emplace_back().id = id;
        return &MidiClipAt(Owner(), Value().size() - 1).Edit();
    }
};

class QueryMidiClipList final : public Face<tses::IQueryMIDIClipList, std::vector<orvo::MidiClip>> {
public:
    using Face::Face;

    kelcore::uint32 GetCount() override { return CountOf(Value()); }
    tses::IQueryMIDIClip* GetClip(kelcore::uint32 index) override {
        return index < Value().size() ? &MidiClipAt(Owner(), index).Query() : nullptr;
    }
};

using MidiClipListNode =
    TwoFacedNode<std::vector<orvo::MidiClip>, EditMidiClipList, QueryMidiClipList>;

}  // namespace refhost
