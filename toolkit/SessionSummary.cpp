#include "toolkit/SessionSummary.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <sstream>

#include <orvo/Lookup.h>
#include <orvo/Times.h>
#include "platform/kelcore/Strings.h"
#include "platform/tbcore/MediaHandlers.h"

namespace toolkit {
namespace {

std::string HandlerName(const std::string& id) {
    const std::u16string identifier = kelcore::UTF8to16(id);
    std::u16string_view name = identifier;
    tbcore::TranslateToHumanReadableMediaHandler(identifier, name);
    return kelcore::UTF16to8(name);
}

MediaSummary SummariseFile(const orvo::File& file, const FileTest& exists) {
    MediaSummary summary;
    summary.id = file.id;
    summary.path = file.path;
    summary.handlerId = file.mediaHandler;
    summary.handlerName = HandlerName(file.mediaHandler);
    summary.found = !file.path.empty() && exists(file.path);
    return summary;
}

std::size_t CountOffline(const orvo::Session& session) {
    std::size_t count = 0;
    orvo::ForEachClip(session, [&count](const auto& /*track*/, const auto& clip) {
        if constexpr (requires { clip.offline; }) {
            count += clip.offline ? 1 : 0;
        }
    });
    return count;
}

std::string TimecodeName(const orvo::FrameRate& rate) {
    std::ostringstream name;
    name << "timecode, " << rate;
    return name.str();
}

void SummariseTimeline(const std::optional<orvo::GlobalTrackInfo>& timeline,
                       SessionSummary& summary) {
    if (timeline) {
        summary.tempoChanges = !timeline->tempoEvents.empty();
        summary.timeSignatureChanges = !timeline->timeSignatureEvents.empty();
        summary.keySignatureChanges = !timeline->keySignatureEvents.empty();
    }
}

}  // namespace

std::vector<MediaSummary> SessionSummary::MissingMedia() const {
    std::vector<MediaSummary> missing;
    std::copy_if(media.begin(), media.end(), std::back_inserter(missing),
                 [](const MediaSummary& file) { return !file.found; });
    return missing;
}

std::size_t SessionSummary::MissingCount() const {
    return MissingMedia().size();
}

std::optional<std::string> SessionSummary::FormatSmpteStart() const {
    const auto rate = orvo::FrameRateOf(timeFormat);
    return rate ? orvo::FormatTimecode(smpteStart, sampleRate, *rate)
                : orvo::FormatTime(smpteStart, sampleRate);
}

void SessionSummary::AddStoredPaths(const std::map<kelcore::uint32, StoredPaths>& paths) {
    for (MediaSummary& file : media) {
        const auto stored = paths.find(file.id);
        if (!file.found && stored != paths.end()) {
            file.stored = stored->second;
        }
    }
}

SessionSummary Summarise(const orvo::Session& session, const FileTest& exists) {
    SessionSummary summary;
    summary.format = session.formatDescription;
    summary.sampleRate = session.sampleRate;
    summary.audioChannelType = session.audioChannelType;
    summary.bitDepth = session.bitDepth;
    summary.duration = session.duration;
    summary.audioDevice = session.audioDevice;
    summary.beatsPerMinute = session.musicalTime.beatsPerMinute;
    summary.beatsPerBar = session.musicalTime.beatsPerBar;
    summary.noteLength = session.musicalTime.noteLength;
    summary.timeFormat = session.timeFormat;
    summary.smpteStart = session.smpteStart;
    SummariseTimeline(session.metronome.globalTrackInfo, summary);
    summary.metronomeOn = session.metronome.enabled;
    summary.metronomeBeats = session.metronome.pattern.size();
    summary.properties = session.properties;
    summary.xmpLength = kelcore::UTF8to16(session.xmpMetadata).size();
    summary.clipsOffline = CountOffline(session);
    for (const orvo::File& file : session.files) {
        summary.media.push_back(SummariseFile(file, exists));
    }
    return summary;
}

std::string TimeFormatName(const orvo::TimeFormat& format) {
    switch (format.format) {
        case orvo::TimeDisplay::Decimal:
            return "decimal";
        case orvo::TimeDisplay::Samples:
            return "samples";
        case orvo::TimeDisplay::BarsAndBeats:
            return "bars and beats";
        case orvo::TimeDisplay::Timecode:
            // As it is stored, whether there is such timecode or not.
            return TimecodeName({.count = static_cast<std::uint32_t>(format.frameRate),
                                 .ntsc = format.ntsc,
                                 .dropFrame = format.dropFrame});
        default: {
            const auto rate = orvo::FrameRateOf(format);
            return rate ? TimecodeName(*rate)
                        : fmt::format("format {}", static_cast<std::int32_t>(format.format));
        }
    }
}

std::optional<std::string> ChannelLayoutName(orvo::ChannelType type) {
    switch (type) {
        case orvo::ChannelType::Mono:
            return "mono";
        case orvo::ChannelType::Stereo:
            return "stereo";
        case orvo::ChannelType::FivePointOne:
            return "5.1";
        default:
            return std::nullopt;
    }
}

}  // namespace toolkit
