#include "plugin/elements/clips/Writers.h"

#include <boost/bind/bind.hpp>
#include <optional>

#include "format/clips/GlobalTrackInfo.h"
#include "host/Metronome.h"
#include "plugin/elements/clips/EventBlock.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// The blocks of the musical timeline are the host's own bytes, encoded as text.

namespace tses {
namespace {

void ApplyIfStated(std::optional<bool> visible, IEditGlobalTrackInfo& info,
                   void (IEditGlobalTrackInfo::*set)(bool)) {
    if (visible) {
        (info.*set)(*visible);
    }
}

void Apply(const GlobalTrackInfoRecord& record, IEditGlobalTrackInfo& info) {
    ApplyIfStated(record.timeSigVisible, info, &IEditGlobalTrackInfo::SetTimeSigVisible);
    ApplyIfStated(record.keySigVisible, info, &IEditGlobalTrackInfo::SetKeySigVisible);
    ApplyIfStated(record.tempoVisible, info, &IEditGlobalTrackInfo::SetTempoVisible);
}

using SetEvents = void (IEditGlobalTrackInfo::*)(const kelcore::byte* data, kelcore::uint32 size);

void ApplyEvents(const std::vector<kelcore::byte>& bytes,
                 const HostReference<IEditGlobalTrackInfo>& info, SetEvents set) {
    if (info && !bytes.empty()) {
        ((*info).*set)(bytes.data(), static_cast<kelcore::uint32>(bytes.size()));
    }
}

}  // namespace

void Serializer::Impl::StartGlobalTrackInfo(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto metronome = savedState_.metronome.As<IEditMetronomeInfoPrivate>();
    // Without a metronome, the events inside must not reach the info of an earlier metronome.
    clips_.globalTrackInfo =
        metronome ? Retain(metronome->GetGlobalTrackInfo()) : HostReference<IEditGlobalTrackInfo>();
    if (clips_.globalTrackInfo) {
        Apply(ReadRecord<GlobalTrackInfoRecord, kGlobalTrackInfoRows>(attributes),
              *clips_.globalTrackInfo);
    }
}

void Serializer::Impl::EndTempoEvents() {
    ApplyEvents(CollectedBlock(), clips_.globalTrackInfo, &IEditGlobalTrackInfo::SetTempoEvents);
}

void Serializer::Impl::EndTimeSignatureEvents() {
    ApplyEvents(CollectedBlock(), clips_.globalTrackInfo,
                &IEditGlobalTrackInfo::SetTimeSignatureEvents);
}

void Serializer::Impl::EndKeySignatureEvents() {
    ApplyEvents(CollectedBlock(), clips_.globalTrackInfo,
                &IEditGlobalTrackInfo::SetKeySignatureEvents);
}

// Writing

namespace {

GlobalTrackInfoRecord QueryVisibilities(IQueryGlobalTrackInfo& info) {
    GlobalTrackInfoRecord record;
    record.timeSigVisible = info.GetTimeSigVisible();
    record.keySigVisible = info.GetKeySigVisible();
    record.tempoVisible = info.GetTempoVisible();
    return record;
}

struct BlockRow {
    std::u16string_view element;
    kelcore::uint32 (IQueryGlobalTrackInfo::*size)();
    bool (IQueryGlobalTrackInfo::*fill)(kelcore::byte* buffer);
};
constexpr BlockRow kBlocks[] = {
    {names::tempoEvents, &IQueryGlobalTrackInfo::GetTempoEventsSize,
     &IQueryGlobalTrackInfo::GetTempoEvents},
    {names::timeSignatureEvents, &IQueryGlobalTrackInfo::GetTimeSignatureEventsSize,
     &IQueryGlobalTrackInfo::GetTimeSignatureEvents},
    {names::keySignatureEvents, &IQueryGlobalTrackInfo::GetKeySignatureEventsSize,
     &IQueryGlobalTrackInfo::GetKeySignatureEvents},
};

}  // namespace

bool WriteGlobalTrackInfo(SessionXMLWriter& writer, IQueryGlobalTrackInfo& info) {
    using namespace boost::placeholders;
    if (!writer.StartElement(names::globalTrackInfo,
                             ToAttributes<kGlobalTrackInfoRows>(QueryVisibilities(info)))) {
        return false;
    }
    for (const BlockRow& row : kBlocks) {
        WriteEventBlock(writer, row.element,
                        {boost::bind(row.size, &info), boost::bind(row.fill, &info, _1)});
    }
    return writer.EndElement();
}

}  // namespace tses
