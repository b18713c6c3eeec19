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
#include "toolkit/Saturating.h"
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
bool IsFormula(const std::string& text) {
    return !text.empty() && std::string_view("=+-@\t\r").find(text[0]) != std::string_view::npos;
}

class Lines {
public:
    Lines(const Session& session, Reporter& reporter)
        : session_(session), reporter_(reporter), index_(session) {}

    std::vector<Line> All() {
        AddTracks("video", &Session::videoTracks, &orvo::VideoTrack::clips);
        AddTracks("audio", &Session::audioTracks, &orvo::AudioTrack::clips);
        AddTracks("midi", &Session::audioTracks, &orvo::AudioTrack::midiClips);
        for (const Marker& marker : MarkersOf(session_)) {
            lines_.push_back({.type = "marker",
                              .name = AsText(marker.name, kMarkers),
                              .start = marker.start,
                              .duration = marker.duration,
                              .comment = AsText(marker.comment, kMarkers)});
        }
        std::ranges::stable_sort(lines_, {}, &Line::start);
        return std::move(lines_);
    }

private:
    inline static const ModelPath kMarkers = ModelPath() / &Session::xmpMetadata;

    template <class Track, class Clip>
    void AddTracks(const char* type, std::vector<Track> Session::*tracks,
                   std::vector<Clip> Track::*clips) {
        for (std::size_t i = 0; i < (session_.*tracks).size(); ++i) {
            const Track& track = (session_.*tracks)[i];
            const ModelPath place = ModelPath() / tracks / i;
            const std::string name =
                (track.*clips).empty() ? "" : AsText(track.name, place / &Track::name);
            for (std::size_t k = 0; k < (track.*clips).size(); ++k) {
                Add(type, name, (track.*clips)[k], place / clips / k);
            }
        }
    }

    template <class Clip>
    void Add(const char* type, const std::string& track, const Clip& clip, const ModelPath& place) {
        lines_.push_back({.type = type,
                          .track = track,
                          .name = AsText(clip.name, place / &Clip::name),
                          .start = clip.startPoint,
                          .duration = clip.duration,
                          .sourceIn = clip.sourceInPoint});
        if constexpr (requires { clip.fileId; }) {
            const orvo::File* const file = index_.FindFile(clip.fileId);
            lines_.back().file = file != nullptr ? AsText(file->path, place / &Clip::fileId) : "";
        }
    }

    std::string AsText(const std::string& text, const ModelPath& place) {
        if (!IsFormula(text)) {
            return text;
        }
        reporter_.Add(orvo::Fidelity::Approximated, place,
                      "got an apostrophe, so that no spreadsheet takes it for a formula", text);
        return "'" + text;
    }

    const Session& session_;
    Reporter& reporter_;
    orvo::SessionIndex index_;
    std::vector<Line> lines_;
};

std::string TextOf(const Line& line, const Session& session) {
    const auto time = [&](std::int64_t position) {
        return orvo::FormatTime(position, session.sampleRate).value_or("");
    };
    const std::int64_t end = SaturatingSum(line.start, line.duration);
    return orvo::CsvLine(std::vector<orvo::TableCell>{
        std::string(line.type), line.track, line.name, line.start, end, line.duration,
        time(line.start), time(end), time(line.duration), line.sourceIn, line.file, line.comment});
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
    for (const Line& line : Lines(job.session, job.reporter).All()) {
        out.Write(TextOf(line, job.session));
    }
    ReportWhatIsNotCarried(job.session, CarriedByCsv(), job.reporter);
}

}  // namespace toolkit::interchange
