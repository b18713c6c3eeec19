#include "plugin/elements/clips/GlobalTrackInfo.h"

#include <boost/bind/bind.hpp>

#include "host/Metronome.h"
#include "plugin/elements/clips/EventBlock.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/serializer/ValueEncoding.h"

// The musical timeline, inside "metronome":
//
//     <globalTrackInfo keySigVisible="false" tempoVisible="true" timeSigVisible="true">
//       <tempoEvents/> <timeSignatureEvents/> <keySignatureEvents/>
//     </globalTrackInfo>
//
// Each block is the host's own bytes as text. A visibility that the element does not state stays as
// the host has it.

namespace tses {
namespace {

struct VisibilityRow {
    std::u16string_view name;
    void (IEditGlobalTrackInfo::*set)(bool visible);
};
constexpr VisibilityRow kVisibilities[] = {
    {names::timeSigVisible, &IEditGlobalTrackInfo::SetTimeSigVisible},
    {names::keySigVisible, &IEditGlobalTrackInfo::SetKeySigVisible},
    {names::tempoVisible, &IEditGlobalTrackInfo::SetTempoVisible},
};

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
    // Without one the events inside find no info either, also not that of an earlier metronome.
    clips_.globalTrackInfo =
        metronome ? Retain(metronome->GetGlobalTrackInfo()) : HostReference<IEditGlobalTrackInfo>();
    if (!clips_.globalTrackInfo) {
        return;
    }
    for (const VisibilityRow& row : kVisibilities) {
        if (const auto text = attributes.Find(row.name)) {
            ((*clips_.globalTrackInfo).*row.set)(ParseBoolStrict(*text));
        }
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
    const AttributeMap attributes = {{names::timeSigVisible, FormatBool(info.GetTimeSigVisible())},
                                     {names::keySigVisible, FormatBool(info.GetKeySigVisible())},
                                     {names::tempoVisible, FormatBool(info.GetTempoVisible())}};
    if (!writer.StartElement(names::globalTrackInfo, attributes)) {
        return false;
    }
    for (const BlockRow& row : kBlocks) {
        WriteEventBlock(writer, row.element,
                        {boost::bind(row.size, &info), boost::bind(row.fill, &info, _1)});
    }
    return writer.EndElement();
}

}  // namespace tses
