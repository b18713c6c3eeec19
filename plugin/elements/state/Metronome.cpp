#include "plugin/elements/state/Metronome.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/AudioTracks.h"
#include "host/GlobalTrackInfo.h"
#include "platform/kelcore/Trace.h"
#include "plugin/elements/clips/GlobalTrackInfo.h"
#include "plugin/elements/tracks/Tracks.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/Keywords.h"
#include "plugin/serializer/SerializerImpl.h"

// The click track:
//
//     <metronome enabled="true" pattern="downBeat upBeat upBeat " soundSet="sticks">
//       <metronomeTrack/> <globalTrackInfo/>
//     </metronome>
//
// Each beat of the pattern is followed by a space, the last one too.

namespace tses {
namespace {

constexpr kelcore::uint32 kSticks = 8;

constexpr Keyword<kelcore::uint32> kSoundSets[] = {
    {u"african1", 0}, {u"african2", 1}, {u"beeps", 2},  {u"cymbals", 3},      {u"kit", 4},
    {u"latin1", 5},   {u"latin2", 6},   {u"latin3", 7}, {u"sticks", kSticks}, {u"tabla", 9},
};

constexpr Keyword<kelcore::uint32> kBeats[] = {
    {u"none", 0}, {u"downBeat", 1}, {u"upBeat", 2}, {u"subdivision", 3}};

struct MetronomeRecord {
    bool enabled = false;
    kelcore::uint32 soundSet = kSticks;
    std::vector<kelcore::uint32> pattern;
};

// Reading

void ReadSoundSet(std::u16string_view text, MetronomeRecord& record) {
    record.soundSet = FindValue(kSoundSets, text).value_or(kSticks);
}

/// Pieces between single spaces; what is no beat, the empty piece included, is passed over.
void ReadPattern(std::u16string_view text, MetronomeRecord& record) {
    std::u16string_view rest = text;
    while (!rest.empty()) {
        const std::u16string_view piece = rest.substr(0, rest.find(u' '));
        if (const auto beat = FindValue(kBeats, piece)) {
            record.pattern.push_back(*beat);
        }
        rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    }
}

constexpr Binding<MetronomeRecord> kBindings[] = {
    {names::enabled, read::StrictBool<&MetronomeRecord::enabled>},
    {names::pattern, ReadPattern},
    {names::soundSet, ReadSoundSet},
};

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
    MetronomeRecord record;
    ReadAttributes<kBindings>(attributes, record);
    auto metronome = Retain(session_->GetMetronomeInfo());
    if (metronome) {
        Apply(record, *metronome);
    }
    // Only now: the one before is released when its successor is set.
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

/// Beats without a keyword are left out.
std::u16string PatternText(const std::vector<kelcore::uint32>& pattern) {
    std::u16string text;
    for (const kelcore::uint32 beat : pattern) {
        const auto keyword = FindKeyword(kBeats, beat, u"");
        if (!keyword.empty()) {
            text.append(keyword).append(u" ");
        }
    }
    return text;
}

/// So is a sound set without one.
AttributeMap ToAttributes(const MetronomeRecord& record) {
    AttributeMap attributes;
    attributes.Set(names::enabled, FormatBool(record.enabled));
    attributes.SetUnlessEmpty(names::soundSet, FindKeyword(kSoundSets, record.soundSet, u""));
    attributes.Set(names::pattern, PatternText(record.pattern));
    return attributes;
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
        // Closes the session's element. What follows lands beside it, the session's own end then
        // fails, and nothing is saved.
        kelcore::trace::Write(kelcore::trace::kWriterCategory, "the host gave no metronome");
        writer.EndElement();
        return true;
    }
    MetronomeRecord record;
    return QueryMetronome(writer, *metronome, record) &&
           writer.StartElement(names::metronome, ToAttributes(record)) &&
           WriteMetronomeTrack(writer, *metronome) && WriteMusicalTimeline(writer, metronome) &&
           writer.EndElement();
}

}  // namespace tses
