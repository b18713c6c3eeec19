#include "plugin/elements/state/Writers.h"

#include <utility>

#include "format/state/Metronome.h"
#include "host/AudioTracks.h"
#include "host/GlobalTrackInfo.h"
#include "platform/kelcore/Trace.h"
#include "plugin/elements/clips/Writers.h"
#include "plugin/elements/tracks/Writers.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

void Apply(const MetronomeRecord& record, IEditMetronomeInfo& metronome) {
    metronome.SetEnabled(record.enabled);
    metronome.SetSoundSet(record.soundSet);
    if (!record.pattern.empty()) {
        metronome.SetPattern(record.pattern.data(),
                             static_cast<kelcore::uint32>(record.pattern.size()));
    }
}

}  // namespace

void Serializer::Impl::StartMetronome(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<MetronomeRecord, kMetronomeRows>(attributes);
    auto metronome = Retain(session_->GetMetronomeInfo());
    if (metronome) {
        Apply(record, *metronome);
    }
    // Last, so that the earlier metronome is released only after the new one has its values.
    savedState_.metronome = std::move(metronome);
}

// Writing

namespace {

bool QueryMetronome(SessionXMLWriter& writer, IQueryMetronomeInfo& metronome,
                    MetronomeRecord& record) {
    record.enabled = metronome.IsEnabled();
    record.soundSet = metronome.GetSoundSet();
    return ForEachItem(writer, metronome.GetPatternLength(), [&](kelcore::uint32 index) {
        record.pattern.push_back(metronome.GetPatternBeat(index));
        return true;
    });
}

bool WriteMetronomeTrack(SessionXMLWriter& writer, IQueryMetronomeInfo& metronome) {
    const auto track = Retain(metronome.GetMetronomeTrack()).As<IQueryAudioTrackPrivate>();
    return !track || WriteTrack(writer, *track);
}

bool WriteMusicalTimeline(SessionXMLWriter& writer,
                          const HostReference<IQueryMetronomeInfo>& metronome) {
    const auto withTimeline = metronome.As<IQueryMetronomeInfoPrivate>();
    if (!withTimeline) {
        return true;
    }
    const auto info = Retain(withTimeline->GetGlobalTrackInfo());
    return !info || WriteGlobalTrackInfo(writer, *info);
}

}  // namespace

bool WriteMetronome(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    const auto metronome = Retain(session->GetMetronomeInfo());
    if (!metronome) {
        // This closes the session's element. What follows lands beside it, the session's own
        // EndElement then fails, and nothing is saved.
        kelcore::trace::Write(kelcore::trace::kWriterCategory, "the host gave no metronome");
        writer.EndElement();
        return true;
    }
    MetronomeRecord record;
    return QueryMetronome(writer, *metronome, record) &&
           writer.StartElement(names::metronome, ToAttributes<kMetronomeRows>(record)) &&
           WriteMetronomeTrack(writer, *metronome) && WriteMusicalTimeline(writer, metronome) &&
           writer.EndElement();
}

}  // namespace tses
