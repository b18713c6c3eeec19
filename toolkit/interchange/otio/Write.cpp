#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <orvo/Lookup.h>
#include "toolkit/FileContent.h"
#include "toolkit/collect/PortableNames.h"
#include "toolkit/interchange/Carried.h"
#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/ZipArchive.h"
#include "toolkit/interchange/otio/Archive.h"
#include "toolkit/interchange/otio/MediaUrl.h"
#include "toolkit/interchange/otio/Otio.h"
#include "toolkit/interchange/otio/TrackWriter.h"
#include "toolkit/relink/PathNames.h"

namespace toolkit::interchange {
namespace otio {
namespace {

using orvo::Fidelity;
using orvo::Session;

Units UnitsOf(const Export& job) {
    const auto samples = Rate::Of(job.session.sampleRate);
    if (!samples) {
        throw Failure({.file = job.target.string(),
                       .what = "was not written, because the session has no sample rate",
                       .advice = "give it one"});
    }
    if (!job.options.frameRate) {
        return {.samples = *samples, .counts = *samples};
    }
    const auto frames = Rate::Of(*job.options.frameRate);
    if (!frames) {
        throw Failure(
            {.what = fmt::format("{} frames a second are no rate", *job.options.frameRate)});
    }
    return {.samples = *samples, .counts = *frames};
}

Carried CarriedParts() {
    using orvo::AudioClip;
    using orvo::AudioTrack;
    using orvo::ClipStretch;
    using orvo::MidiClip;
    using orvo::VideoClip;
    using orvo::VideoTrack;
    Carried carried = CarriedByAll();
    carried.Handles(&Session::sampleRate, &Session::smpteStart, &Session::xmpMetadata)
        .Handles(&orvo::File::path)
        .Handles(&AudioTrack::index, &AudioTrack::name, &AudioTrack::mute)
        .Handles(&VideoTrack::index, &VideoTrack::name)
        .Handles(&AudioClip::name, &AudioClip::startPoint, &AudioClip::duration,
                 &AudioClip::sourceInPoint, &AudioClip::fileId, &AudioClip::looped,
                 &AudioClip::fadeIn, &AudioClip::fadeOut, &AudioClip::crossFadeHeadClipId,
                 &AudioClip::crossFadeTailClipId, &AudioClip::mute)
        .LooksInto(&AudioClip::stretch)
        .Handles(&ClipStretch::stretchMode, &ClipStretch::stretchRatio)
        .Handles(&VideoClip::name, &VideoClip::startPoint, &VideoClip::duration,
                 &VideoClip::sourceInPoint, &VideoClip::fileId)
        .Handles(&MidiClip::name, &MidiClip::startPoint, &MidiClip::duration,
                 &MidiClip::sourceInPoint)
        .LacksByNature(&AudioClip::zOrder, "layers of clips")
        .LacksByNature(&VideoClip::zOrder, "layers of clips")
        .LacksByNature(&AudioClip::autoCrossfade, "choices of automatic crossfades");
    return carried;
}

class TimelineWriter {
public:
    TimelineWriter(const Export& job, const Urls& urls, const orvo::TextSink& sink)
        : job_(job),
          session_(job.session),
          units_(UnitsOf(job)),
          out_(sink, {.layout = orvo::json::JsonWriter::Layout::Compact}),
          objects_(out_, units_.counts),
          tracks_(job, units_, urls, out_) {}

    void Write() {
        objects_.Begin("Timeline.1");
        WriteOwn();
        objects_.Name(Title());
        objects_.Time("global_start_time", StartTime());
        out_.Key("tracks");
        objects_.Begin("Stack.1");
        objects_.NamedWithoutMetadata("tracks");
        objects_.Null("source_range");
        objects_.EmptyList("effects");
        WriteMarkers();
        objects_.Flag("enabled", true);
        WriteTracks();
        objects_.End();
        objects_.End();
        out_.Finish("\n");
        ReportUnusedFiles();
        ReportMetadata();
        if (!units_.AreSamples()) {
            job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::sampleRate,
                              "times count frames", fmt::format("{}", session_.sampleRate));
        }
        ReportWhatIsNotCarried(session_, CarriedParts(), job_.reporter);
    }

private:
    void WriteOwn() {
        static const auto kSaid = KeysOf(&Session::videoTracks, &Session::audioTracks);
        if (!job_.options.ownData) {
            objects_.NoMetadata();
            return;
        }
        objects_.BeginOwn();
        objects_.Integer("version", kMetadataVersion);
        objects_.Integer("sampleRate", session_.sampleRate);
        out_.Key("session");
        EncodeRest(out_, session_, kSaid);
        objects_.EndOwn();
    }

    std::string Title() const {
        for (const WorkProperty& property : WorkPropertiesOf(session_)) {
            if (property.name == "dc:title") {
                return property.value;
            }
        }
        return {};
    }

    std::int64_t StartTime() {
        const std::int64_t start = session_.smpteStart;
        if (std::abs(static_cast<double>(start)) >= static_cast<double>(kMostCounted)) {
            job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::smpteStart,
                              "the timecode is too large", fmt::format("{}", start));
            return 0;
        }
        if (start != 0) {
            job_.reporter.Add(Fidelity::Guessed, ModelPath() / &Session::smpteStart,
                              "the timecode is taken as a count of samples",
                              fmt::format("{}", start));
        }
        return units_.Of(start);
    }

    void WriteMarkers() {
        out_.Key("markers");
        out_.BeginList();
        for (const Marker& marker : MarkersOf(session_)) {
            out_.Item();
            objects_.Begin("Marker.2");
            objects_.NamedWithoutMetadata(marker.name);
            objects_.Text("color", "RED");
            objects_.Text("comment", marker.comment);
            objects_.Range("marked_range", units_.Of(marker.start), units_.Of(marker.duration));
            objects_.End();
        }
        out_.EndList();
    }

    void WriteTracks() {
        out_.Key("children");
        out_.BeginList();
        for (const orvo::VideoTrack* const track : orvo::VideoTracksInOrder(session_)) {
            tracks_.Write(*track, PositionOf(session_.videoTracks, track));
            Progress();
        }
        for (const orvo::AudioTrack* const track : orvo::AudioTracksInOrder(session_)) {
            // That of the metronome is in no list, and stands in the metadata.
            if (session_.metronome.track && track == &*session_.metronome.track) {
                continue;
            }
            tracks_.Write(*track, PositionOf(session_.audioTracks, track));
            Progress();
        }
        out_.EndList();
        ReportOrder();
    }

    /// Tracks of video stand before the others, wherever the session shows them.
    void ReportOrder() {
        const auto first =
            std::ranges::min_element(session_.audioTracks, {}, &orvo::AudioTrack::index);
        for (std::size_t i = 0; i < session_.videoTracks.size(); ++i) {
            const std::uint32_t index = session_.videoTracks[i].index;
            if (first != session_.audioTracks.end() && first->index < index) {
                job_.reporter.Add(
                    Fidelity::Lost,
                    ModelPath() / &Session::videoTracks / i / &orvo::VideoTrack::index,
                    "tracks of video stand before those of audio", fmt::format("{}", index));
            }
        }
    }

    void ReportUnusedFiles() {
        for (std::size_t i = 0; i < session_.files.size(); ++i) {
            if (!tracks_.UsedFiles().contains(session_.files[i].id)) {
                job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::files / i,
                                  "no clip plays the file", session_.files[i].path);
            }
        }
    }

    void ReportMetadata() {
        if (!session_.xmpMetadata.empty()) {
            job_.reporter.Add(Fidelity::Approximated, ModelPath() / &Session::xmpMetadata,
                              "only its title and its markers have a place",
                              fmt::format("{} bytes", session_.xmpMetadata.size()));
        }
    }

    template <class Track>
    static std::size_t PositionOf(const std::vector<Track>& tracks, const Track* track) {
        return static_cast<std::size_t>(track - tracks.data());
    }

    void Progress() {
        const std::size_t count = session_.videoTracks.size() + session_.audioTracks.size();
        job_.Progress(static_cast<double>(++written_) / static_cast<double>(count + 1));
    }

    const Export& job_;
    const Session& session_;
    Units units_;
    orvo::json::JsonWriter out_;
    Objects objects_;
    TrackWriter tracks_;
    std::size_t written_ = 0;
};

/// The entries of an archive for those files of a session that exist, by their ids.
std::map<std::uint32_t, std::string> EntriesOf(const Export& job) {
    std::map<std::uint32_t, std::string> entries;
    UniqueNames names;
    for (std::size_t i = 0; i < job.session.files.size(); ++i) {
        const orvo::File& file = job.session.files[i];
        if (FindProblem(file.path)) {
            job.reporter.Add(Fidelity::Lost, ModelPath() / &Session::files / i,
                             "the media are not in the archive, because they cannot be read",
                             file.path);
            continue;
        }
        const std::string name = names.Take(PortableName(LastNameOf(file.path)));
        entries.try_emplace(file.id, std::string(kMediaFolder) + name);
    }
    return entries;
}

}  // namespace
}  // namespace otio

void WriteOtio(const Export& job) {
    otio::Urls urls;
    for (const orvo::File& file : job.session.files) {
        urls.try_emplace(file.id, otio::UrlOf(file.path));
    }
    OutputFile& file = job.outputs.Add(job.target);
    otio::TimelineWriter(job, urls, [&](std::string_view block) { file.Write(block); }).Write();
}

void WriteOtioz(const Export& job) {
    const std::map<std::uint32_t, std::string> entries = otio::EntriesOf(job);
    otio::Urls urls;
    for (const orvo::File& file : job.session.files) {
        const auto entry = entries.find(file.id);
        urls.try_emplace(file.id, otio::UrlOf(entry != entries.end() ? entry->second : file.path));
    }
    ZipWriter zip(job.outputs.Add(job.target));
    zip.Begin(otio::kContentEntry);
    otio::TimelineWriter(job, urls, [&](std::string_view block) { zip.Write(block); }).Write();
    zip.End();
    zip.Add(otio::kVersionEntry, otio::kVersionText);
    for (const orvo::File& file : job.session.files) {
        const auto entry = entries.find(file.id);
        if (entry != entries.end()) {
            job.Progress(0.99);
            zip.AddFile(entry->second, file.path);
        }
    }
    zip.Finish();
}

}  // namespace toolkit::interchange
