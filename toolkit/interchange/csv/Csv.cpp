#include "toolkit/interchange/csv/Csv.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <orvo/Lookup.h>
#include <orvo/Tables.h>
#include <orvo/Times.h>
#include "toolkit/interchange/Carried.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/OutputFile.h"

namespace toolkit::interchange {
namespace {

using orvo::Session;

constexpr std::array kColumns = {"type",         "track",    "name",      "start",
                                 "end",          "duration", "startTime", "endTime",
                                 "durationTime", "sourceIn", "file",      "comment"};

/// A line of the table.
struct Line {
    const char* type = "";
    std::string track{};
    std::string name{};
    std::int64_t start = 0;
    std::int64_t duration = 0;
    orvo::TableCell sourceIn{};
    std::string file{};
    std::string comment{};
};

/// A spreadsheet takes such a text for a formula, and runs it.
std::string AsText(const std::string& text) {
    const bool isFormula =
        !text.empty() && std::string_view("=+-@\t\r").find(text[0]) != std::string_view::npos;
    return isFormula ? "'" + text : text;
}

class Lines {
public:
    explicit Lines(const Session& session) : session_(session), index_(session) {}

    std::vector<Line> All() {
        for (const orvo::VideoTrack& track : session_.videoTracks) {
            AddClips("video", track.name, track.clips);
        }
        for (const orvo::AudioTrack& track : session_.audioTracks) {
            AddClips("audio", track.name, track.clips);
            for (const orvo::MidiClip& clip : track.midiClips) {
                Add("midi", track.name, clip);
            }
        }
        for (const Marker& marker : MarkersOf(session_)) {
            lines_.push_back({.type = "marker",
                              .name = marker.name,
                              .start = marker.start,
                              .duration = marker.duration,
                              .comment = marker.comment});
        }
        std::ranges::stable_sort(lines_, {}, &Line::start);
        return std::move(lines_);
    }

private:
    template <class Clips>
    void AddClips(const char* type, const std::string& track, const Clips& clips) {
        for (const auto& clip : clips) {
            Line& line = Add(type, track, clip);
            const orvo::File* const file = index_.FindFile(clip.fileId);
            line.file = file != nullptr ? file->path : "";
        }
    }

    template <class Clip>
    Line& Add(const char* type, const std::string& track, const Clip& clip) {
        return lines_.emplace_back(Line{.type = type,
                                        .track = track,
                                        .name = clip.name,
                                        .start = clip.startPoint,
                                        .duration = clip.duration,
                                        .sourceIn = clip.sourceInPoint});
    }

    const Session& session_;
    orvo::SessionIndex index_;
    std::vector<Line> lines_;
};

std::string TextOf(const Line& line, const Session& session) {
    const auto time = [&](std::int64_t position) {
        return orvo::FormatTime(position, session.sampleRate).value_or("");
    };
    const std::int64_t end = line.start + line.duration;
    return orvo::CsvLine(std::vector<orvo::TableCell>{
        std::string(line.type), AsText(line.track), AsText(line.name), line.start, end,
        line.duration, time(line.start), time(end), time(line.duration), line.sourceIn,
        AsText(line.file), AsText(line.comment)});
}

/// A table of clips and markers has nothing else.
Carried CarriedByCsv() {
    using orvo::AudioClip;
    using orvo::AudioTrack;
    using orvo::MidiClip;
    using orvo::VideoClip;
    using orvo::VideoTrack;
    Carried carried = CarriedByAll();
    carried.Handles(&AudioTrack::name)
        .Handles(&VideoTrack::name)
        .Handles(&AudioClip::name, &AudioClip::startPoint, &AudioClip::duration,
                 &AudioClip::sourceInPoint, &AudioClip::fileId)
        .Handles(&VideoClip::name, &VideoClip::startPoint, &VideoClip::duration,
                 &VideoClip::sourceInPoint, &VideoClip::fileId)
        .Handles(&MidiClip::name, &MidiClip::startPoint, &MidiClip::duration,
                 &MidiClip::sourceInPoint)
        .Handles(&orvo::File::path)
        .Handles(&Session::sampleRate)
        .LacksByNature(&Session::xmpMetadata, "metadata but markers")
        .CountsTheRest();
    return carried;
}

}  // namespace

void WriteCsv(const Export& job) {
    OutputFile& out = job.outputs.Add(job.target);
    out.Write(orvo::CsvLine(std::vector<orvo::TableCell>(kColumns.begin(), kColumns.end())));
    for (const Line& line : Lines(job.session).All()) {
        out.Write(TextOf(line, job.session));
    }
    ReportWhatIsNotCarried(job.session, CarriedByCsv(), job.reporter);
}

}  // namespace toolkit::interchange
