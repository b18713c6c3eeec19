#include "toolkit/interchange/edl/Edl.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Lookup.h>
#include "toolkit/collect/PortableNames.h"
#include "toolkit/interchange/Carried.h"
#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/OutputFile.h"
#include "toolkit/interchange/edl/FrameClock.h"
#include "toolkit/interchange/edl/Reels.h"
#include "toolkit/interchange/edl/Shots.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioTrack;
using orvo::Session;
using orvo::VideoTrack;

constexpr std::size_t kMostEvents = 999;
constexpr std::size_t kMostFiles = 500;
constexpr std::string_view kBlack = "BL";

/// A text on one line.
std::string OneLine(std::string text) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
    std::ranges::replace_if(text, isControl, ' ');
    return text;
}

/// How many events a shot takes: a fade out is one of its own.
std::size_t EventsOf(const Shot& shot) {
    return shot.fadeOut > 0 ? 2 : 1;
}

/// What a list consists of, and which other lists its track has.
struct ListPart {
    const ShotList* shots = nullptr;
    std::size_t first = 0;
    std::size_t end = 0;
};

std::vector<ListPart> PartsOf(const ShotList& shots) {
    std::vector<ListPart> parts;
    std::size_t events = kMostEvents;
    for (std::size_t i = 0; i < shots.size(); ++i) {
        if (events + EventsOf(shots[i]) > kMostEvents) {
            parts.push_back({.shots = &shots, .first = i});
            events = 0;
        }
        events += EventsOf(shots[i]);
        parts.back().end = i + 1;
    }
    return parts;
}

/// Writes the events of one file.
class EventWriter {
public:
    EventWriter(OutputFile& out, std::string_view channel, const FrameClock& clock,
                const Reels& reels, const orvo::SessionIndex& index)
        : out_(out), channel_(channel), clock_(clock), reels_(reels), index_(index) {}

    void WriteHead(const std::string& title) {
        out_.Write(fmt::format("TITLE: {}\nFCM: {}\n", OneLine(title),
                               clock_.Rate().dropFrame ? "DROP FRAME" : "NON-DROP FRAME"));
    }

    void Write(const ListPart& part) {
        for (std::size_t i = part.first; i < part.end; ++i) {
            const ShotList& shots = *part.shots;
            const bool endsInDissolve = i + 1 < shots.size() && shots[i + 1].dissolve > 0;
            const std::int64_t end =
                endsInDissolve ? shots[i + 1].recordIn : shots[i].recordOut - shots[i].fadeOut;
            WriteBegin(shots, i, end);
            if (shots[i].fadeOut > 0) {
                WriteFadeOut(shots[i]);
            }
        }
    }

private:
    void WriteBegin(const ShotList& shots, std::size_t number, std::int64_t end) {
        const Shot& shot = shots[number];
        ++event_;
        std::int64_t transition = 0;
        if (shot.dissolve > 0) {
            WriteCut(shots[number - 1], shot.recordIn, shot.recordIn);
            transition = shot.dissolve;
        } else if (shot.fadeIn > 0) {
            WriteBlackCut(shot.recordIn);
            transition = shot.fadeIn;
        }
        if (transition > 0) {
            WriteLine(ReelOf(shot), ChannelOf(shot), transition, shot.sourceIn, shot.SourceAt(end),
                      shot.recordIn, end);
        } else {
            WriteCut(shot, shot.recordIn, end);
        }
        if (shot.dissolve > 0) {
            WriteSpeed(shots[number - 1], shot.recordIn);
            WriteNames(shots[number - 1], "FROM");
        }
        WriteSpeed(shot, shot.recordIn);
        WriteNames(shot, transition > 0 ? "TO" : "FROM");
    }

    void WriteFadeOut(const Shot& shot) {
        const std::int64_t begin = shot.recordOut - shot.fadeOut;
        ++event_;
        WriteCut(shot, begin, begin);
        WriteLine(kBlack, ChannelOf(shot), shot.fadeOut, 0, shot.fadeOut, begin, shot.recordOut);
        WriteSpeed(shot, begin);
        WriteNames(shot, "FROM");
    }

    void WriteCut(const Shot& shot, std::int64_t from, std::int64_t to) {
        WriteLine(ReelOf(shot), ChannelOf(shot), 0, shot.SourceAt(from), shot.SourceAt(to), from,
                  to);
    }

    void WriteBlackCut(std::int64_t record) {
        WriteLine(kBlack, channel_, 0, 0, 0, record, record);
    }

    /// @param transition  the frames of a dissolve; 0 for a cut
    void WriteLine(std::string_view reel, std::string_view channel, std::int64_t transition,
                   std::int64_t sourceIn, std::int64_t sourceOut, std::int64_t recordIn,
                   std::int64_t recordOut) {
        const std::string kind =
            transition > 0 ? fmt::format("D    {:03}", transition) : "C       ";
        out_.Write(fmt::format("{:03}  {:<8} {:<5} {} {} {} {} {}\n", event_, reel, channel, kind,
                               clock_.TimecodeOf(sourceIn), clock_.TimecodeOf(sourceOut),
                               clock_.TimecodeOf(recordIn), clock_.TimecodeOf(recordOut)));
    }

    void WriteSpeed(const Shot& shot, std::int64_t record) {
        if (shot.speed != 1) {
            out_.Write(fmt::format("M2   {:<8}       {:05.1f}                {}\n", ReelOf(shot),
                                   clock_.FramesPerSecond() * shot.speed,
                                   clock_.TimecodeOf(shot.SourceAt(record))));
        }
    }

    void WriteNames(const Shot& shot, std::string_view direction) {
        if (!shot.name->empty()) {
            out_.Write(fmt::format("* {} CLIP NAME:  {}\n", direction, OneLine(*shot.name)));
        }
        const orvo::File* const file = index_.FindFile(shot.fileId);
        if (file != nullptr) {
            out_.Write(fmt::format("* {}SOURCE FILE:  {}\n", direction == "TO" ? "TO " : "",
                                   OneLine(file->path)));
        }
    }

    const std::string& ReelOf(const Shot& shot) const { return reels_.Of(shot.fileId); }

    std::string_view ChannelOf(const Shot& shot) const {
        return shot.isSecondChannel ? "A2" : channel_;
    }

    OutputFile& out_;
    std::string_view channel_;
    const FrameClock& clock_;
    const Reels& reels_;
    const orvo::SessionIndex& index_;
    std::size_t event_ = 0;
};

class Writer {
public:
    explicit Writer(const Export& job)
        : job_(job),
          clock_(std::max(job.session.sampleRate, 1U), FrameRateOfList(job.session, job.options)),
          reels_(job.session),
          index_(job.session) {}

    void Write() {
        const Session& session = job_.session;
        const auto hasClips = [](const auto& track) { return !track.clips.empty(); };
        tracks_ = session.videoTracks.size() + session.audioTracks.size();
        tracksWithClips_ =
            static_cast<std::size_t>(std::ranges::count_if(session.videoTracks, hasClips) +
                                     std::ranges::count_if(session.audioTracks, hasClips));
        WriteTracks(&Session::videoTracks);
        WriteTracks(&Session::audioTracks);
        if (files_ == 0) {
            EventWriter(job_.outputs.Add(job_.target), "", clock_, reels_, index_)
                .WriteHead(job_.target.stem().string());
        }
    }

private:
    template <class Track>
    void WriteTracks(std::vector<Track> Session::*tracks) {
        for (std::size_t i = 0; i < (job_.session.*tracks).size(); ++i) {
            const ModelPath place = ModelPath() / tracks / i;
            const Track& track = (job_.session.*tracks)[i];
            if (!track.clips.empty()) {
                WriteLists(track, ShotsOf(track, place, clock_, job_), place);
            }
            job_.Progress(static_cast<double>(++tracksDone_) / static_cast<double>(tracks_));
        }
    }

    template <class Track>
    void WriteLists(const Track& track, const std::vector<ShotList>& lists,
                    const ModelPath& place) {
        std::vector<ListPart> parts;
        for (const ShotList& list : lists) {
            std::ranges::copy(PartsOf(list), std::back_inserter(parts));
        }
        if (parts.size() > lists.size()) {
            job_.reporter.Add(orvo::Fidelity::Moved, place,
                              "lists have up to 999 events; more are in other lists",
                              fmt::format("{} lists", parts.size()));
        }
        const bool isOnly = tracksWithClips_ == 1 && parts.size() == 1;
        for (const ListPart& part : parts) {
            WritePart(track, part, isOnly);
        }
    }

    template <class Track>
    void WritePart(const Track& track, const ListPart& part, bool isOnly) {
        if (++files_ > kMostFiles) {
            throw Failure({.file = job_.target.string(),
                           .what = fmt::format("more than {} lists would be needed", kMostFiles),
                           .advice = "split the session, or choose another kind of file"});
        }
        const std::string stem = job_.target.stem().string();
        const std::string name = job_.target.extension().string();
        const std::string own =
            names_.Take(PortableName(fmt::format("{} {}{}", stem, track.name, name)));
        EventWriter writer(job_.outputs.Add(isOnly ? job_.target : job_.target.parent_path() / own),
                           ChannelOf(track), clock_, reels_, index_);
        writer.WriteHead(track.name.empty() ? stem : fmt::format("{} {}", stem, track.name));
        writer.Write(part);
    }

    static std::string_view ChannelOf(const VideoTrack&) { return "V"; }
    static std::string_view ChannelOf(const AudioTrack& track) {
        return track.audioChannelType == orvo::ChannelType::Mono ? "A" : "AA";
    }

    const Export& job_;
    FrameClock clock_;
    Reels reels_;
    orvo::SessionIndex index_;
    UniqueNames names_;
    std::size_t tracks_ = 0;
    std::size_t tracksWithClips_ = 0;
    std::size_t tracksDone_ = 0;
    std::size_t files_ = 0;
};

/// Channels of tracks are carried as far as two go.
void ReportChannels(const Session& session, Reporter& reporter) {
    for (std::size_t i = 0; i < session.audioTracks.size(); ++i) {
        const AudioTrack& track = session.audioTracks[i];
        const auto channels = static_cast<std::uint32_t>(track.audioChannelType);
        if (channels > 2) {
            reporter.Add(orvo::Fidelity::Approximated,
                         ModelPath() / &Session::audioTracks / i / &AudioTrack::audioChannelType,
                         "a list has two channels", fmt::format("{}", channels));
        }
        if (channels == 0 && !track.clips.empty()) {
            reporter.Add(orvo::Fidelity::Guessed,
                         ModelPath() / &Session::audioTracks / i / &AudioTrack::audioChannelType,
                         "the session does not say the channels", "2");
        }
        for (std::size_t k = 0; k < track.midiClips.size(); ++k) {
            reporter.Add(orvo::Fidelity::Lost,
                         ModelPath() / &Session::audioTracks / i / &AudioTrack::midiClips / k,
                         "lists have no MIDI", track.midiClips[k].name);
        }
    }
}

Carried CarriedByEdl() {
    using orvo::AudioClip;
    using orvo::ClipStretch;
    using orvo::VideoClip;
    Carried carried = CarriedByAll();
    carried.LooksInto(&AudioClip::stretch)
        .Handles(&Session::sampleRate)
        .Handles(&AudioTrack::name, &AudioTrack::audioChannelType, &AudioTrack::midiClips)
        .Handles(&VideoTrack::name)
        .Handles(&AudioClip::name, &AudioClip::startPoint, &AudioClip::duration,
                 &AudioClip::sourceInPoint, &AudioClip::fileId, &AudioClip::looped,
                 &AudioClip::fadeIn, &AudioClip::fadeOut, &AudioClip::channelSources)
        .Handles(&VideoClip::name, &VideoClip::startPoint, &VideoClip::duration,
                 &VideoClip::sourceInPoint, &VideoClip::fileId)
        .Handles(&orvo::File::path)
        .Handles(&ClipStretch::stretchRatio)
        .LacksByNature(&ClipStretch::stretchMode, "stretch modes")
        .LacksByNature(&AudioClip::autoCrossfade, "automatic crossfades")
        .LacksByNature(&AudioClip::crossFadeHeadClipId, "links of crossfades")
        .LacksByNature(&AudioClip::crossFadeTailClipId, "links of crossfades")
        .LacksByNature(&AudioClip::zOrder, "stacking orders")
        .LacksByNature(&VideoClip::zOrder, "stacking orders")
        .LacksByNature(&AudioClip::hue, "colours")
        .LacksByNature(&VideoClip::hue, "colours")
        .LacksByNature(&AudioTrack::hue, "colours")
        .LacksByNature(&VideoTrack::hue, "colours")
        .LacksByNature(&AudioTrack::index, "orders of tracks")
        .LacksByNature(&VideoTrack::index, "orders of tracks")
        .LacksByNature(&AudioTrack::kind, "kinds of tracks")
        .LacksByNature(&Session::bitDepth, "bit depths")
        .LacksByNature(&Session::audioChannelType, "channels of the session")
        .LacksByNature(&Session::mixingOptions, "mixing options")
        .LacksByNature(&Session::musicalTime, "tempos")
        .LacksByNature(&Session::xmpMetadata, "metadata");
    return carried;
}

}  // namespace

void WriteEdl(const Export& job) {
    Writer(job).Write();
    ReportChannels(job.session, job.reporter);
    ReportWhatIsNotCarried(job.session, CarriedByEdl(), job.reporter);
}

}  // namespace toolkit::interchange
