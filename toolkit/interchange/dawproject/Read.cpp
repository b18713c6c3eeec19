#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <map>
#include <string>
#include <utility>

#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Extraction.h"
#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/dawproject/ContentReader.h"
#include "toolkit/interchange/dawproject/DawProject.h"
#include "toolkit/interchange/dawproject/Entries.h"
#include "toolkit/interchange/dawproject/Metadata.h"
#include "toolkit/interchange/dawproject/Restored.h"
#include "toolkit/interchange/dawproject/SessionBuilder.h"
#include "toolkit/interchange/dawproject/StructureReader.h"

namespace toolkit::interchange {
namespace dawproject {
namespace {

using orvo::Fidelity;
using orvo::Session;
using pugi::xml_node;

// Far beyond what programs write.
constexpr std::uint64_t kMostXml = std::uint64_t{1} << 29;
constexpr std::uint64_t kMostState = std::uint64_t{1} << 28;

constexpr double kUsualTempo = 120;

/// A tempo, unless it is none that music has.
std::optional<double> TempoOf(const xml_node& element) {
    constexpr double kLowest = 1;
    constexpr double kHighest = 10'000;
    const auto bpm = NumberOf(element.attribute("value").value());
    return bpm && *bpm >= kLowest && *bpm <= kHighest ? bpm : std::nullopt;
}

class ProjectReader {
public:
    ProjectReader(const Import& job, const ZipReader& zip)
        : job_(job), zip_(zip), document_(job, zip.Read(kProjectEntry, kMostXml)) {}

    /// Reads the whole document.
    Session Read() {
        session_.sampleRate = UsualRate();
        ReadTransport();
        const TempoMap tempo = ReadTempo();
        Structure structure = ReadStructure(
            document_, [this](const std::string& entry) { return ContentOf(entry); }, session_);
        SessionBuilder builder(document_, structure, media_, session_);
        ReadContent(tempo, structure, builder);
        builder.Finish();
        ReadScenes();
        CountDropped();
        ReadMetadata(tempo);
        TakeChannelsOfMaster();
        return std::move(session_);
    }

    const std::vector<MediaReader::Inside>& FilesInside() const { return media_.FilesInside(); }

private:
    std::optional<std::string> ContentOf(const std::string& entry) const {
        return zip_.Find(entry) != nullptr ? std::optional(zip_.Read(entry, kMostState))
                                           : std::nullopt;
    }

    /// The rate of most media: a document has none of its own.
    std::uint32_t UsualRate() const {
        constexpr double kHighest = 10'000'000;
        std::map<double, std::size_t> rates;
        for (xml_node element = document_.Root(); !element.empty();
             element = NextElement(element)) {
            const auto rate = IsNamed(element, "Audio")
                                  ? NumberOf(element.attribute("sampleRate").value())
                                  : std::nullopt;
            if (rate && *rate >= 1 && *rate <= kHighest && std::trunc(*rate) == *rate) {
                ++rates[*rate];
            }
        }
        const auto usual =
            std::ranges::max_element(rates, {}, [](const auto& rate) { return rate.second; });
        if (usual == rates.end()) {
            job_.reporter.Add(Fidelity::Guessed, kProjectEntry, "no media say the sample rate",
                              std::to_string(job_.options.sampleRate));
            return std::max(job_.options.sampleRate, 1U);
        }
        return static_cast<std::uint32_t>(usual->first);
    }

    // Tempo

    void ReadTransport() {
        const xml_node transport = document_.Root().child("Transport");
        if (const xml_node tempo = transport.child("Tempo")) {
            session_.musicalTime.beatsPerMinute = TempoOf(tempo).value_or(0);
            if (!TempoOf(tempo)) {
                document_.Report(Fidelity::Lost, tempo, "it is no tempo",
                                 tempo.attribute("value").value());
            }
        }
        if (const xml_node meter = transport.child("TimeSignature")) {
            session_.musicalTime.beatsPerBar = BeatsOf(meter, "numerator");
            session_.musicalTime.noteLength = BeatsOf(meter, "denominator");
        }
    }

    std::int32_t BeatsOf(const xml_node& meter, const char* attribute) const {
        constexpr double kMost = 1000;
        const double beats = document_.Number(meter, attribute).value_or(0);
        if (beats < 1 || beats > kMost) {
            document_.Report(Fidelity::Lost, meter, "it is no meter",
                             meter.attribute(attribute).value());
            return 0;
        }
        return static_cast<std::int32_t>(beats);
    }

    TempoMap ReadTempo() {
        const double bpm = session_.musicalTime.beatsPerMinute;
        const double usual = bpm > 0 ? bpm : kUsualTempo;
        const xml_node arrangement = document_.Root().child("Arrangement");
        const xml_node meters = arrangement.child("TimeSignatureAutomation");
        if (std::ranges::distance(meters.children("TimeSignaturePoint")) > 1) {
            document_.Report(Fidelity::Lost, meters, "a session keeps one meter");
        }
        const xml_node automation = arrangement.child("TempoAutomation");
        std::vector<TempoPoint> points = TempoPointsOf(automation);
        if (points.empty()) {
            return TempoMap(usual);
        }
        if (session_.musicalTime.beatsPerMinute <= 0) {
            session_.musicalTime.beatsPerMinute = points.front().bpm;
        }
        if (std::ranges::any_of(points,
                                [&](const TempoPoint& p) { return p.bpm != points.front().bpm; })) {
            document_.Report(Fidelity::Lost, automation,
                             "a session keeps one tempo; all times are those of the changes");
        }
        return TempoMap(usual, std::move(points));
    }

    std::vector<TempoPoint> TempoPointsOf(const xml_node& automation) const {
        std::vector<TempoPoint> points;
        for (const xml_node& point : automation.children("RealPoint")) {
            const auto time = document_.Number(point, "time");
            const auto bpm = TempoOf(point);
            if (!time || !bpm) {
                document_.Report(Fidelity::Lost, point, "it is no tempo",
                                 point.attribute("value").value());
                continue;
            }
            points.push_back(
                {.beat = *time,
                 .bpm = *bpm,
                 .ramps = point.attribute("interpolation").value() == std::string_view("linear")});
        }
        std::ranges::stable_sort(points, {}, &TempoPoint::beat);
        if (TimeUnitOf(automation, "timeUnit", TimeUnit::Beats) == TimeUnit::Seconds) {
            CountInBeats(points);
        }
        return points;
    }

    /// Their places are in seconds. Even ramps of time become even ramps of beats that last as
    /// long in beats.
    static void CountInBeats(std::vector<TempoPoint>& points) {
        constexpr double kSecondsAMinute = 60;
        double beat = 0;
        double seconds = 0;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double length = points[i].beat - seconds;
            const TempoPoint& last = points[i == 0 ? 0 : i - 1];
            const double bpm = last.ramps && i > 0 ? (last.bpm + points[i].bpm) / 2 : last.bpm;
            seconds = points[i].beat;
            beat += length * bpm / kSecondsAMinute;
            points[i].beat = beat;
        }
    }

    // Content

    void ReadContent(const TempoMap& tempo, Structure& structure, SessionBuilder& builder) {
        ContentReader content(
            document_, session_.sampleRate,
            [&](const xml_node& clip, std::string_view track, const std::vector<Leaf>& leaves) {
                builder.Add(clip, track, leaves);
            },
            [&](const xml_node& target, const std::vector<ReadPoint>& points) {
                AddLane(structure.targets, target, points);
            });
        const xml_node lanes = document_.Root().child("Arrangement").child("Lanes");
        if (!lanes.empty()) {
            content.Read(lanes, TimeFrame(tempo, TimeUnit::Beats));
        }
    }

    void AddLane(Targets& targets, const xml_node& target, const std::vector<ReadPoint>& points) {
        const char* const id = target.attribute("parameter").value();
        const auto found = targets.find(id);
        if (found == targets.end()) {
            document_.Report(Fidelity::Lost, target, "the automation moves nothing known", id);
            return;
        }
        orvo::Parameter& parameter = *found->second.parameter;
        if (parameter.automation) {
            document_.Report(Fidelity::Lost, target, "a parameter has one lane", id);
        } else if (!points.empty()) {
            const xml_node lane = target.parent();
            const ValueScale scale = !lane.attribute("unit").empty()
                                         ? ScaleOf(document_, lane, found->second.scale.kind)
                                         : found->second.scale;
            parameter.automation = AutomationOf(points, scale);
        }
    }

    void ReadScenes() const {
        const xml_node scenes = document_.Root().child("Scenes");
        if (const auto count = std::ranges::distance(scenes.children("Scene")); count > 0) {
            document_.Report(Fidelity::Lost, scenes, "a session has no scenes",
                             std::to_string(count));
        }
    }

    /// Attributes for which a session has nothing, wherever they stand.
    void CountDropped() const {
        struct Dropped {
            const char* attribute;
            std::string_view plural;
        };
        static constexpr std::array<Dropped, 4> kDropped = {
            {{"comment", "comments"},
             {"deviceVendor", "vendors of devices"},
             {"pluginVersion", "versions of devices"},
             {"algorithm", "algorithms of stretching"}}};
        for (xml_node element = document_.Root(); !element.empty();
             element = NextElement(element)) {
            for (const Dropped& dropped : kDropped) {
                const bool isKept = IsNamed(element, "Marker");
                if (!isKept && !element.attribute(dropped.attribute).empty()) {
                    job_.reporter.CountLost(dropped.plural);
                }
            }
        }
    }

    // Of the whole

    void ReadMetadata(const TempoMap& tempo) {
        if (zip_.Find(kMetadataEntry) != nullptr) {
            session_.xmpMetadata =
                XmpOfMetadata(zip_.Read(kMetadataEntry, kMostXml), job_.reporter);
        }
        const std::vector<Marker> markers = ReadMarkers(tempo);
        if (!markers.empty()) {
            session_.xmpMetadata = WithMarkers(session_.xmpMetadata, markers, session_.sampleRate);
        }
    }

    std::vector<Marker> ReadMarkers(const TempoMap& tempo) const {
        std::vector<Marker> markers;
        const xml_node list = document_.Root().child("Arrangement").child("Markers");
        const TimeFrame frame(tempo, TimeUnitOf(list, "timeUnit", TimeUnit::Beats));
        for (const xml_node& marker : list.children("Marker")) {
            const double time = document_.Number(marker, "time").value_or(0);
            markers.push_back({.start = document_.Samples(marker, frame.AbsoluteSeconds(time),
                                                          session_.sampleRate),
                               .name = marker.attribute("name").value(),
                               .comment = marker.attribute("comment").value()});
        }
        return markers;
    }

    void TakeChannelsOfMaster() {
        const auto master = std::ranges::find(session_.audioTracks, orvo::TrackKind::Master,
                                              &orvo::AudioTrack::kind);
        if (master != session_.audioTracks.end()) {
            session_.audioChannelType = master->audioChannelType;
        }
    }

    const Import& job_;
    const ZipReader& zip_;
    ProjectDocument document_;
    Session session_;
    MediaReader media_{document_,
                       [this](const std::string& entry) { return zip_.Find(entry) != nullptr; },
                       session_};
};

/// Writes media into the folder that was asked for, and lets the session's files lead there.
void ExtractAll(const Import& job, const ZipReader& zip,
                const std::vector<MediaReader::Inside>& files, Session& session) {
    if (job.options.mediaFolder.empty()) {
        return;
    }
    Extraction extraction(job, zip);
    for (const MediaReader::Inside& inside : files) {
        session.files[inside.file].path = extraction.Extract(inside.entry);
        job.reporter.Add(Fidelity::Moved,
                         ModelPath() / &Session::files / inside.file / &orvo::File::path,
                         "the media were taken out of the file", session.files[inside.file].path);
    }
    extraction.Keep();
}

/// The files of a restored session that are missing where they were, but are in the archive.
std::vector<MediaReader::Inside> MissingFilesOf(const Session& session, const ZipReader& zip) {
    std::vector<MediaReader::Inside> inside;
    const auto entries = MediaEntriesOf(session);
    for (std::size_t i = 0; i < session.files.size(); ++i) {
        const std::string& entry = entries.at(session.files[i].id);
        std::error_code error;
        if (zip.Find(entry) != nullptr && !std::filesystem::exists(session.files[i].path, error)) {
            inside.push_back({.file = i, .entry = entry});
        }
    }
    return inside;
}

}  // namespace
}  // namespace dawproject

orvo::Session ReadDawProject(const Import& job) {
    using namespace dawproject;
    const ZipReader zip(job.file);
    if (zip.Find(kProjectEntry) == nullptr) {
        throw Failure({.file = job.file.string(),
                       .what = "has no entry \"project.xml\": not a DAWproject file"});
    }
    if (std::optional<Session> restored = ReadRestored(job, zip)) {
        ExtractAll(job, zip, MissingFilesOf(*restored, zip), *restored);
        return std::move(*restored);
    }
    ProjectReader reader(job, zip);
    Session session = reader.Read();
    ExtractAll(job, zip, reader.FilesInside(), session);
    return session;
}

}  // namespace toolkit::interchange
