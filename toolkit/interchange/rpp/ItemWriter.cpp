#include "toolkit/interchange/rpp/ItemWriter.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <array>
#include <string>

#include "toolkit/FileNames.h"
#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/ControlRest.h"
#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/Levels.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioClip;
using orvo::Fidelity;

/// The word for the media of a file; no value if there is none for its extension.
std::optional<std::string_view> SourceWordOf(const std::string& path) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 17> kWords = {
        {{"wav", "WAVE"},
         {"wave", "WAVE"},
         {"bwf", "WAVE"},
         {"w64", "WAVE"},
         {"rf64", "WAVE"},
         {"aif", "WAVE"},
         {"aiff", "WAVE"},
         {"mp3", "MP3"},
         {"flac", "FLAC"},
         {"ogg", "VORBIS"},
         {"oga", "VORBIS"},
         {"mov", "VIDEO"},
         {"mp4", "VIDEO"},
         {"m4v", "VIDEO"},
         {"avi", "VIDEO"},
         {"mkv", "VIDEO"},
         {"webm", "VIDEO"}}};
    const std::string extension = ExtensionOf(path);
    const auto* const word =
        std::ranges::find(kWords, extension, &std::pair<std::string_view, std::string_view>::first);
    return word != kWords.end() ? std::optional(word->second) : std::nullopt;
}

void ReportFade(const std::optional<orvo::Fade>& fade, const ModelPath& place, Reporter& reporter) {
    if (!fade) {
        return;
    }
    if (fade->type != orvo::FadeType::Logarithmic) {
        reporter.Add(Fidelity::Approximated, place / &orvo::Fade::type,
                     "the fade became a straight line",
                     fmt::format("{}", fmt::streamed(fade->type)));
    }
    if (fade->crossFadeLinkType != orvo::CrossFadeLink::Symmetric) {
        reporter.CountLost("links of crossfades");
    }
}

}  // namespace

double StaticValueOf(const std::optional<orvo::Component>& control) {
    const auto value = [&](const auto& parameters) -> double {
        const auto parameter = parameters.find(0);
        return parameter != parameters.end() ? parameter->second.value.value_or(0) : 0;
    };
    return control ? value(control->parameters) : 0;
}

ItemWriter::ItemWriter(const Export& job, RppText& text)
    : job_(job), text_(text), index_(job.session) {
    using orvo::Session;
    const auto& groups = job.session.clipGroups;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        for (const orvo::ClipGroupItem& item : groups[i].items) {
            const auto [known, isNew] = groups_.try_emplace({item.trackId, item.clipId}, i + 1);
            if (!isNew && known->second != i + 1) {
                job.reporter.Add(Fidelity::Lost, ModelPath() / &Session::clipGroups / i,
                                 "a clip is in one group only",
                                 fmt::format("clip {} of track {}", item.clipId, item.trackId));
            }
        }
    }
}

void ItemWriter::Write(const AudioClip& clip, std::uint32_t trackId, const ModelPath& place) {
    WritePlace(clip, clip.looped);
    WriteFades(clip, place);
    text_.Line("MUTE {:d}", ValueOf(clip.mute, place / &AudioClip::mute) >= kOnFrom);
    WriteIdentity(clip, trackId);
    WriteLevels(clip, place);
    text_.Line("SOFFS {}", SecondsOf(clip.sourceInPoint));
    WriteStretch(clip, place);
    if (!clip.channelSources.empty()) {
        std::string choice;
        for (const auto& [channel, source] : clip.channelSources) {
            choice += fmt::format("{}{}: {}", choice.empty() ? "" : ", ", channel, source);
        }
        job_.reporter.Add(Fidelity::Lost, place / &AudioClip::channelSources,
                          "the choice of channels has no place", choice);
    }
    WriteSource(clip.fileId, place / &AudioClip::fileId, false);
    text_.Close();
}

void ItemWriter::Write(const orvo::VideoClip& clip, std::uint32_t trackId, const ModelPath& place) {
    WritePlace(clip, false);
    WriteIdentity(clip, trackId);
    text_.Line("SOFFS {}", SecondsOf(clip.sourceInPoint));
    WriteSource(clip.fileId, place / &orvo::VideoClip::fileId, true);
    text_.Close();
}

void ItemWriter::Write(const orvo::MidiClip& clip, std::uint32_t trackId, const ModelPath&) {
    WritePlace(clip, false);
    WriteIdentity(clip, trackId);
    text_.Close();
}

template <class Clip>
void ItemWriter::WritePlace(const Clip& clip, bool isLoop) {
    text_.Open("ITEM");
    text_.Line("POSITION {}", SecondsOf(clip.startPoint));
    text_.Line("LENGTH {}", SecondsOf(clip.duration));
    text_.Line("LOOP {:d}", isLoop);
}

template <class Clip>
void ItemWriter::WriteIdentity(const Clip& clip, std::uint32_t trackId) {
    if (clip.lockedInTime) {
        text_.Line("LOCK 1");
    }
    const auto group = groups_.find({trackId, clip.id});
    if (group != groups_.end()) {
        text_.Line("GROUP {}", group->second);
    }
    text_.Line("NAME {}", QuotedForRpp(clip.name));
}

void ItemWriter::WriteFades(const AudioClip& clip, const ModelPath& place) {
    constexpr int kLinear = 0;
    const FadeLengths fades = FadesOf(clip, job_.options.conventions, place, job_.reporter);
    ReportFade(clip.fadeIn, place / &AudioClip::fadeIn, job_.reporter);
    ReportFade(clip.fadeOut, place / &AudioClip::fadeOut, job_.reporter);
    text_.Line("FADEIN {} {}", kLinear, SecondsOf(fades.in));
    text_.Line("FADEOUT {} {}", kLinear, SecondsOf(fades.out));
}

void ItemWriter::WriteLevels(const AudioClip& clip, const ModelPath& place) {
    const double gain =
        ToAmplitude(ValueOf(clip.gain, place / &AudioClip::gain), job_.options.conventions.levels);
    text_.Line("VOLPAN {} {} 1 -1", gain, ValueOf(clip.pan, place / &AudioClip::pan));
}

double ItemWriter::ValueOf(const std::optional<orvo::Component>& control,
                           const ModelPath& place) const {
    ReportRestOf(control, place, job_.reporter);
    ReportLostLane(control, place, job_.reporter);
    return StaticValueOf(control);
}

void ItemWriter::WriteStretch(const AudioClip& clip, const ModelPath& place) {
    const double stretch = StretchOf(clip, job_.options.conventions.stretchRatio);
    const bool isOn = clip.stretch && clip.stretch->stretchMode != orvo::StretchMode::Off;
    const double pitch = isOn ? clip.stretch->pitchAdjustment : 0;
    const bool isVarispeed = isOn && clip.stretch->stretchType == orvo::StretchType::Varispeed;
    text_.Line("PLAYRATE {} {:d} {} -1", 1 / stretch, !isVarispeed, pitch);
    if (!clip.stretch) {
        return;
    }
    const ModelPath there = place / &AudioClip::stretch;
    if (pitch != 0) {
        job_.reporter.Add(Fidelity::Guessed, there / &orvo::ClipStretch::pitchAdjustment,
                          "the shift in pitch was taken as semitones", fmt::format("{}", pitch));
    }
    if (isOn) {
        job_.reporter.Add(Fidelity::Approximated, there, "the stretch has another algorithm",
                          fmt::format("{}, {}", fmt::streamed(clip.stretch->stretchMode),
                                      fmt::streamed(clip.stretch->stretchType)));
    }
}

void ItemWriter::WriteSource(std::uint32_t fileId, const ModelPath& place, bool isVideo) {
    const orvo::File* const file = index_.FindFile(fileId);
    if (file == nullptr) {
        return;
    }
    const std::optional<std::string_view> word = SourceWordOf(file->path);
    if (!word) {
        job_.reporter.Add(Fidelity::Guessed, place, "the kind of the media is unknown", file->path);
    }
    text_.Open("SOURCE {}", word.value_or(isVideo ? "VIDEO" : "WAVE"));
    text_.Line("FILE {}", QuotedForRpp(file->path));
    text_.Close();
}

double ItemWriter::SecondsOf(std::int64_t samples) const {
    return static_cast<double>(samples) / std::max(job_.session.sampleRate, 1U);
}

}  // namespace toolkit::interchange
