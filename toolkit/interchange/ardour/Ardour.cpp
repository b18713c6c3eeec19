#include "toolkit/interchange/ardour/Ardour.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include <orvo/Lookup.h>
#include "toolkit/Saturating.h"
#include "toolkit/interchange/Carried.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/OutputFile.h"
#include "toolkit/interchange/ardour/ArdourXml.h"
#include "toolkit/interchange/ardour/RegionWriter.h"
#include "toolkit/interchange/ardour/Regions.h"
#include "toolkit/interchange/ardour/RouteWriter.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::Session;

/// Names of routes, of which no two are equal, and which ports can have.
class RouteNames {
public:
    std::string Take(std::string name) {
        std::ranges::replace_if(
            name, [](char c) { return c == '/' || c == ':'; }, '-');
        if (name.empty()) {
            name = "Track";
        }
        std::string unique = name;
        for (std::size_t number = 2; !taken_.insert(unique).second; ++number) {
            unique = name + ' ' + std::to_string(number);
        }
        return unique;
    }

private:
    // What the program calls its own.
    std::unordered_set<std::string> taken_ = {"Master", "Monitor", "Click", "Audition", "LTC"};
};

class Writer {
public:
    Writer(const Export& job, OutputFile& file)
        : job_(job),
          plan_(job.session, job.reporter),
          out_([&file](std::string_view text) { file.Write(text); }, job.session.sampleRate),
          xml_(out_.Xml()) {}

    void Write(const std::string& name) {
        PlanRoutes();
        xml_.Open("Session")
            .Attribute("version", "7002")
            .Attribute("name", name)
            .Attribute("sample-rate", job_.session.sampleRate)
            .Attribute("session-range-is-free", 1)
            .Attribute("id-counter", IdLimit())
            .Attribute("name-counter", 1)
            .Attribute("event-counter", 0)
            .Attribute("vca-counter", 1);
        WriteConfig();
        WriteEmpty("Metadata");
        WriteSources();
        WriteEmpty("Regions");
        WriteLocations();
        WriteEmpty("Bundles");
        WriteRoutes();
        WritePlaylists();
        WriteEmpty("UnusedPlaylists");
        WriteEmpty("RouteGroups");
        WriteTempo();
        xml_.Close();
    }

private:
    void WriteEmpty(std::string_view name) {
        xml_.Open(name);
        xml_.Close();
    }

    void PlanRoutes() {
        RouteNames names;
        master_ = {.planned = plan_.Master(),
                   .name = "Master",
                   .id = out_.NewId(),
                   .channels = ChannelsOfMaster(),
                   .isMaster = true};
        for (const PlannedTrack& planned : plan_.Tracks()) {
            const bool isBus = planned.track->kind == orvo::TrackKind::Bus;
            ArdourRoute route = {.planned = planned,
                                 .name = names.Take(planned.track->name),
                                 .id = out_.NewId(),
                                 .playlist = isBus ? 0 : out_.NewId(),
                                 .channels = ArdourChannelsOf(*planned.track, job_.session),
                                 .order = routes_.size() + 1};
            ReportName(route);
            ReportKind(route);
            ReportClipsOfBus(route);
            regions_.push_back(isBus ? std::vector<ArdourRegion>()
                                     : ArdourRegionsOf(planned, sources_, job_));
            routes_.push_back(std::move(route));
            Progress(0, routes_.size());
        }
    }

    std::uint32_t ChannelsOfMaster() const {
        AudioTrack master;
        master.kind = orvo::TrackKind::Master;
        return ArdourChannelsOf(plan_.Master().track != nullptr ? *plan_.Master().track : master,
                                job_.session);
    }

    void ReportName(const ArdourRoute& route) const {
        const AudioTrack& track = *route.planned.track;
        if (route.name != track.name) {
            job_.reporter.Add(Fidelity::Approximated, route.planned.place / &AudioTrack::name,
                              "the name must differ from others", route.name);
        }
    }

    void ReportKind(const ArdourRoute& route) const {
        const AudioTrack& track = *route.planned.track;
        const ModelPath& place = route.planned.place;
        if (track.kind != orvo::TrackKind::Audio && track.kind != orvo::TrackKind::Bus) {
            job_.reporter.Add(Fidelity::Approximated, place / &AudioTrack::kind,
                              "is a track for audio");
        }
        const auto own = static_cast<std::uint32_t>(track.audioChannelType);
        if (own != route.channels) {
            const bool isSaid = track.audioChannelType != orvo::ChannelType::NotSaid;
            job_.reporter.Add(isSaid ? Fidelity::Approximated : Fidelity::Guessed,
                              place / &AudioTrack::audioChannelType,
                              isSaid ? "has other channels than the session says"
                                     : "the session does not say the channels",
                              std::to_string(route.channels));
        }
    }

    void ReportClipsOfBus(const ArdourRoute& route) const {
        if (route.playlist == 0 && !route.planned.track->clips.empty()) {
            job_.reporter.Add(Fidelity::Lost, route.planned.place / &AudioTrack::clips,
                              "a bus plays no clips",
                              std::to_string(route.planned.track->clips.size()));
        }
    }

    /// More than all ids that are given later.
    std::uint64_t IdLimit() const {
        constexpr std::uint64_t kIdsOfARegion = 8;
        constexpr std::uint64_t kIdsOfARoute = 32;
        constexpr std::uint64_t kIdsOfASend = 16;
        std::uint64_t limit = out_.LastId() + sources_.All().size() + 16;
        for (std::size_t i = 0; i < routes_.size(); ++i) {
            const auto& sends = routes_[i].planned.track->sendList;
            limit += kIdsOfARoute + kIdsOfARegion * regions_[i].size() +
                     (sends ? kIdsOfASend * sends->slots.size() : 0);
        }
        return limit + kIdsOfARoute + MarkersOf(job_.session).size();
    }

    void WriteConfig() {
        xml_.Open("Config");
        for (const auto& [name, value] :
             {std::pair("use-region-fades", "1"), std::pair("use-transport-fades", "0"),
              std::pair("native-file-data-format", "FormatFloat"),
              std::pair("native-file-header-format", "WAVE")}) {
            xml_.Open("Option").Attribute("name", name).Attribute("value", value);
            xml_.Close();
        }
        xml_.Close();
    }

    void WriteSources() {
        const orvo::SessionIndex index(job_.session);
        firstSource_ = out_.LastId() + 1;
        xml_.Open("Sources");
        for (const ArdourSource& source : sources_.All()) {
            const orvo::File* const file = index.FindFile(source.fileId);
            xml_.Open("Source")
                .Attribute("name", file != nullptr ? std::string_view(file->path) : "")
                .Attribute("take-id", "")
                .Attribute("type", "audio")
                .Attribute("flags", "")
                .Attribute("id", out_.NewId())
                .Attribute("channel", source.channel)
                .Attribute("origin", "")
                .Attribute("gain", 1);
            xml_.Close();
        }
        xml_.Close();
    }

    void WriteLocations() {
        xml_.Open("Locations");
        WriteLocation("session", 0, EndOfSession(), "IsSessionRange");
        for (const Marker& marker : MarkersOf(job_.session)) {
            if (marker.start < 0) {
                job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::xmpMetadata,
                                  "a marker is before the start of the session", marker.name);
                continue;
            }
            if (marker.duration != 0 || !marker.comment.empty()) {
                job_.reporter.Add(Fidelity::Lost, ModelPath() / &Session::xmpMetadata,
                                  "a marker has neither a length nor a comment", marker.name);
            }
            WriteLocation(marker.name, marker.start, marker.start, "IsMark");
        }
        xml_.Close();
    }

    void WriteLocation(std::string_view name, std::int64_t start, std::int64_t end,
                       std::string_view flags) {
        xml_.Open("Location")
            .Attribute("id", out_.NewId())
            .Attribute("name", name)
            .Attribute("start", out_.TimeOf(start))
            .Attribute("end", out_.TimeOf(end))
            .Attribute("flags", flags)
            .Attribute("locked", 0);
        xml_.Close();
    }

    /// What is exported: a session's duration, or all of its regions if they last longer.
    std::int64_t EndOfSession() const {
        std::int64_t end = std::max<std::int64_t>(job_.session.duration, 1);
        for (const std::vector<ArdourRegion>& regions : regions_) {
            for (const ArdourRegion& region : regions) {
                end = std::max(end, SaturatingSum(region.position, region.length));
            }
        }
        return end;
    }

    void WriteRoutes() {
        xml_.Open("Routes");
        if (plan_.Master().track != nullptr) {
            plan_.SendsOf(plan_.Master(), job_.reporter);
            if (plan_.Master().track->name != master_.name) {
                job_.reporter.Add(Fidelity::Approximated, plan_.Master().place / &AudioTrack::name,
                                  "the master is called Master", plan_.Master().track->name);
            }
        }
        WriteArdourRoute(master_, nullptr, {}, out_, job_);
        std::size_t slot = 0;
        for (const ArdourRoute& route : routes_) {
            std::vector<ArdourSend> sends;
            for (PlannedSend& send : plan_.SendsOf(route.planned, job_.reporter)) {
                if (routes_[send.target].playlist != 0) {
                    job_.reporter.Add(Fidelity::Lost, send.place, "only busses take sends",
                                      routes_[send.target].name);
                    continue;
                }
                const ArdourRoute* const target = &routes_[send.target];
                sends.push_back({.send = std::move(send), .target = target, .slot = ++slot});
            }
            const auto output = plan_.OutputOf(*route.planned.track);
            WriteArdourRoute(route, output ? &routes_[*output] : &master_, sends, out_, job_);
        }
        xml_.Close();
    }

    void WritePlaylists() {
        xml_.Open("Playlists");
        for (std::size_t i = 0; i < routes_.size(); ++i) {
            const ArdourRoute& route = routes_[i];
            if (route.playlist == 0) {
                continue;
            }
            xml_.Open("Playlist")
                .Attribute("id", route.playlist)
                .Attribute("name", route.name)
                .Attribute("type", "audio")
                .Attribute("orig-track-id", route.id)
                .Attribute("pgroup-id", "")
                .Attribute("shared-with-ids", "")
                .Attribute("frozen", 0)
                .Attribute("combine-ops", 0);
            for (const ArdourRegion& region : regions_[i]) {
                WriteArdourRegion(region,
                                  route.planned.place / &AudioTrack::clips / region.clipNumber,
                                  firstSource_, out_, job_);
            }
            xml_.Close();
            Progress(routes_.size(), i + 1);
        }
        xml_.Close();
    }

    void WriteTempo() {
        const orvo::MusicalTime& time = job_.session.musicalTime;
        const double tempo = time.beatsPerMinute > 0 ? time.beatsPerMinute : 120;
        const int note = time.noteLength > 0 ? time.noteLength : 4;
        xml_.Open("TempoMap").Attribute("superclocks-per-second", 282'240'000);
        xml_.Open("Tempos").Open("Tempo");
        xml_.Attribute("npm", tempo)
            .Attribute("enpm", tempo)
            .Attribute("note-type", note)
            .Attribute("type", "Tempo::Constant")
            .Attribute("active", 1)
            .Attribute("locked-to-meter", 0)
            .Attribute("continuing", 0)
            .Attribute("sclock", 0)
            .Attribute("quarters", "0:0")
            .Attribute("bbt", "1|1|0")
            .Attribute("omega", 0);
        xml_.Close();
        xml_.Close();
        xml_.Open("Meters").Open("Meter");
        xml_.Attribute("note-value", note)
            .Attribute("divisions-per-bar", time.beatsPerBar > 0 ? time.beatsPerBar : 4)
            .Attribute("sclock", 0)
            .Attribute("quarters", "0:0")
            .Attribute("bbt", "1|1|0");
        xml_.Close();
        xml_.Close();
        WriteEmpty("MusicTimes");
        xml_.Close();
    }

    /// Each track is looked at twice.
    void Progress(std::size_t before, std::size_t tracks) const {
        const std::size_t all = 2 * std::max<std::size_t>(plan_.Tracks().size(), 1);
        job_.Progress(static_cast<double>(before + tracks) / static_cast<double>(all));
    }

    const Export& job_;
    MixerPlan plan_;
    ArdourXml out_;
    XmlWriter& xml_;
    ArdourRoute master_;
    ArdourSources sources_;
    std::vector<ArdourRoute> routes_;
    std::vector<std::vector<ArdourRegion>> regions_;  // of each route
    std::uint64_t firstSource_ = 0;
};

Carried CarriedByArdour() {
    using orvo::AudioClip;
    using orvo::ClipStretch;
    using orvo::MusicalTime;
    Carried carried = CarriedByAll();
    carried.LooksInto(&AudioClip::stretch)
        .LooksInto(&Session::musicalTime)
        .LooksInto(&Session::mixingOptions)
        .Handles(&orvo::MixingOptions::playOverlappingClips)
        .Handles(&Session::sampleRate)
        .Handles(&MusicalTime::beatsPerMinute)
        .Handles(&MusicalTime::beatsPerBar, &MusicalTime::noteLength)
        .Handles(&AudioTrack::name, &AudioTrack::index, &AudioTrack::hue, &AudioTrack::kind,
                 &AudioTrack::audioChannelType, &AudioTrack::fader, &AudioTrack::mute,
                 &AudioTrack::pan, &AudioTrack::solo, &AudioTrack::phaseInverted,
                 &AudioTrack::outputTrackId, &AudioTrack::sendList)
        .Handles(&AudioClip::name, &AudioClip::startPoint, &AudioClip::duration,
                 &AudioClip::sourceInPoint, &AudioClip::fileId, &AudioClip::looped,
                 &AudioClip::fadeIn, &AudioClip::fadeOut, &AudioClip::channelSources,
                 &AudioClip::gain, &AudioClip::mute, &AudioClip::lockedInTime)
        .Handles(&orvo::File::path)
        .Handles(&ClipStretch::stretchRatio)
        .LacksByNature(&ClipStretch::stretchMode, "stretch modes")
        .LacksByNature(&MusicalTime::subdivisions, "subdivisions")
        .LacksByNature(&AudioClip::autoCrossfade, "automatic crossfades")
        .LacksByNature(&AudioClip::crossFadeHeadClipId, "links of crossfades")
        .LacksByNature(&AudioClip::crossFadeTailClipId, "links of crossfades")
        .LacksByNature(&AudioClip::zOrder, "stacking orders but for what is heard")
        .LacksByNature(&AudioClip::hue, "colours of clips")
        .LacksByNature(&Session::audioChannelType, "channels of the session but of its master")
        .LacksByNature(&Session::bitDepth, "bit depths")
        .LacksByNature(&Session::xmpMetadata, "metadata but markers");
    return carried;
}

}  // namespace

void WriteArdour(const Export& job) {
    const std::string name = job.target.stem().string();
    job.outputs.AddFolder(job.target);
    Writer(job, job.outputs.Add(job.target / (name + ".ardour"))).Write(name);
    ReportWhatIsNotCarried(job.session, CarriedByArdour(), job.reporter);
}

}  // namespace toolkit::interchange
