#include "toolkit/interchange/dawproject/ClipWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/Levels.h"
#include "toolkit/interchange/Overlaps.h"
#include "toolkit/interchange/dawproject/Controls.h"

namespace toolkit::interchange::dawproject {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::ClipStretch;
using orvo::Fidelity;

/// The sample rate and channels of a sound track of which nothing is known.
constexpr int kUnknown = 0;

bool ChangesNothing(const ParameterLane& lane, double unchanged) {
    return lane.points.empty() && lane.value == unchanged;
}

/// Whether the clips come back as a crossfade.
bool IsCarried(const Overlap& overlap, const std::vector<AudioClip>& clips) {
    const AudioClip& first = clips[overlap.first];
    const AudioClip& second = clips[overlap.second];
    const auto fades = [](const std::optional<orvo::Fade>& fade) {
        return fade && fade->endPoint > fade->startPoint;
    };
    return overlap.isCrossfade && fades(first.fadeOut) && fades(second.fadeIn);
}

}  // namespace

void WritePoints(const Writing& writing, const std::vector<LanePoint>& points, double start) {
    for (const LanePoint& point : points) {
        if (std::isnan(point.value)) {
            continue;
        }
        writing.xml.Open("RealPoint")
            .Attribute("time", start + writing.Seconds(point.offset))
            .Attribute("value", NumberText(point.value))
            .Attribute("interpolation", point.holds ? "hold" : "linear");
        writing.xml.Close();
    }
}

void ClipWriter::Write(const PlannedTrack& track) {
    // Seldom enough not to be felt, often enough to end soon.
    constexpr std::size_t kClipsPerProgress = 256;
    const auto writeAll = [&](const auto& clips, const ModelPath& place, const auto& write) {
        for (std::size_t i = 0; i < clips.size(); ++i) {
            if (i % kClipsPerProgress == 0) {
                writing_.job.Progress(0.5);
            }
            if (HasLength(clips[i], place / i)) {
                write(clips[i], place / i);
            }
        }
    };
    if (track.video != nullptr) {
        writeAll(track.video->clips, track.place / &orvo::VideoTrack::clips,
                 [&](const auto& clip, const ModelPath& place) { WriteVideoClip(clip, place); });
        return;
    }
    writeAll(track.audio->clips, track.place / &AudioTrack::clips,
             [&](const auto& clip, const ModelPath& place) { WriteAudioClip(clip, place); });
    writeAll(track.audio->midiClips, track.place / &AudioTrack::midiClips,
             [&](const auto& clip, const ModelPath& place) { WriteMidiClip(clip, place); });
    ReportOverlaps(track.audio->clips, track.place / &AudioTrack::clips);
}

// Kinds of clips

void ClipWriter::WriteAudioClip(const AudioClip& clip, const ModelPath& place) {
    const Play play = PlayOf(clip, place);
    OpenClip(clip, play.start);
    if (play.loops) {
        xml_.Attribute("loopStart", 0.0).Attribute("loopEnd", play.fileSeconds * play.stretch);
    } else {
        xml_.Attribute("playStop", play.start + writing_.Seconds(clip.duration));
    }
    WriteFades(clip, place);
    if (IsMuted(clip, place)) {
        xml_.Attribute("enable", false);
    }
    const ParameterLane gain = GainOf(clip, place);
    const ParameterLane pan = PanOf(clip, place);
    if (play.loops && (!gain.points.empty() || !pan.points.empty())) {
        Report(Fidelity::Approximated, place, "automation repeats with the loop");
    }
    WriteContent(play, gain, pan);
    xml_.Close();
}

void ClipWriter::WriteVideoClip(const orvo::VideoClip& clip, const ModelPath& place) {
    const WrittenMedia& media = media_.Use(clip.fileId);
    const std::int64_t end = clip.sourceInPoint + clip.duration;
    OpenClip(clip, writing_.Seconds(clip.sourceInPoint));
    xml_.Attribute("playStop", writing_.Seconds(end));
    xml_.Open("Video")
        .Attribute("id", NextId())
        .Attribute("channels", kUnknown)
        .Attribute("sampleRate", kUnknown)
        .Attribute("duration", media.fact.isGuessed ? writing_.Seconds(end) : media.fact.Seconds());
    WriteFile(media);
    xml_.Close();
    xml_.Close();
    if (media.path.empty()) {
        Report(Fidelity::Lost, place / &orvo::VideoClip::fileId, "the clip plays no file");
    }
}

void ClipWriter::WriteMidiClip(const orvo::MidiClip& clip, const ModelPath& place) {
    OpenClip(clip, writing_.Seconds(clip.sourceInPoint));
    xml_.Attribute("playStop", writing_.Seconds(clip.sourceInPoint + clip.duration));
    xml_.Open("Notes").Attribute("id", NextId());
    xml_.Close();
    xml_.Close();
    if (!clip.events.empty()) {
        Report(Fidelity::Lost, place / &orvo::MidiClip::events,
               "the layout of MIDI events is the application's own",
               fmt::format("{} bytes", clip.events.size()));
    }
}

template <class Clip>
void ClipWriter::OpenClip(const Clip& clip, double playStart) {
    xml_.Open("Clip")
        .Attribute("time", writing_.Seconds(clip.startPoint))
        .Attribute("duration", writing_.Seconds(clip.duration));
    WriteName(xml_, clip.name);
    WriteColour(writing_, clip.hue);
    xml_.Attribute("contentTimeUnit", kSeconds).Attribute("playStart", playStart);
}

template <class Clip>
bool ClipWriter::HasLength(const Clip& clip, const ModelPath& place) {
    if (clip.duration <= 0) {
        Report(Fidelity::Lost, place, "the clip has no length", fmt::format("{}", clip.duration));
    }
    return clip.duration > 0;
}

// What an audio clip plays

ClipWriter::Play ClipWriter::PlayOf(const AudioClip& clip, const ModelPath& place) {
    Play play = {.media = media_.UseSound(clip.fileId),
                 .stretch = StretchOf(clip, writing_.job.options.conventions.stretchRatio)};
    if (play.media.path.empty()) {
        Report(Fidelity::Lost, place / &AudioClip::fileId, "the clip plays no file");
    }
    ReportStretch(clip, play.stretch, place);
    double sourceIn = writing_.Seconds(clip.sourceInPoint);
    const double sourceEnd = sourceIn + writing_.Seconds(clip.duration) / play.stretch;
    play.fileSeconds = play.media.fact.frames > 0 ? play.media.fact.Seconds()
                                                  : std::max(sourceEnd, writing_.Seconds(1));
    play.loops = clip.looped;
    const double sample = writing_.Seconds(1);
    if (play.loops && sourceIn >= play.fileSeconds) {
        sourceIn = std::fmod(sourceIn, play.fileSeconds);
        Report(Fidelity::Approximated, place / &AudioClip::sourceInPoint,
               "the loop begins in its first turn", fmt::format("{}", clip.sourceInPoint));
    } else if (!play.loops && sourceEnd > play.fileSeconds + sample) {
        Report(Fidelity::Approximated, place / &AudioClip::duration,
               "the clip goes on after the end of its media",
               fmt::format("{} samples", clip.duration));
    }
    play.start = sourceIn * play.stretch;
    return play;
}

void ClipWriter::ReportStretch(const AudioClip& clip, double stretch, const ModelPath& place) {
    if (!clip.stretch) {
        return;
    }
    const ModelPath where = place / &AudioClip::stretch;
    if (clip.stretch->pitchAdjustment != 0) {
        Report(Fidelity::Lost, where / &ClipStretch::pitchAdjustment,
               "shifts in pitch have no place", fmt::format("{}", clip.stretch->pitchAdjustment));
    }
    const auto report = [&](auto member, auto carried) {
        const auto value = (*clip.stretch).*member;
        if (value != carried) {
            Report(Fidelity::Lost, where / member, "the way of stretching has no place",
                   fmt::format("{}", static_cast<std::int64_t>(value)));
        }
    };
    const ClipStretch usual;
    report(&ClipStretch::stretchMode,
           stretch != 1 ? orvo::StretchMode::Realtime : orvo::StretchMode::Off);
    report(&ClipStretch::stretchType, usual.stretchType);
    report(&ClipStretch::stretchQuality, usual.stretchQuality);
    report(&ClipStretch::transientSensitivity, usual.transientSensitivity);
    report(&ClipStretch::adaptiveWindowSize, usual.adaptiveWindowSize);
    report(&ClipStretch::preserveFormants, usual.preserveFormants);
    if (stretch == 1 && clip.stretch->stretchRatio != 1) {
        Report(Fidelity::Lost, where / &ClipStretch::stretchRatio,
               "the ratio of a clip that is not stretched has no place",
               fmt::format("{}", clip.stretch->stretchRatio));
    }
}

void ClipWriter::WriteFades(const AudioClip& clip, const ModelPath& place) {
    const FadeLengths fades =
        FadesOf(clip, writing_.job.options.conventions, place, writing_.job.reporter);
    const auto report = [&](const std::optional<orvo::Fade>& fade, const ModelPath& where) {
        if (fade && fade->type != orvo::FadeType::Logarithmic) {
            Report(Fidelity::Lost, where / &orvo::Fade::type, "the curve of a fade has no place");
        }
        const bool isLinked = fade && fade->crossFadeLinkType != orvo::CrossFadeLink::Symmetric;
        writing_.job.reporter.CountLost("links of crossfades", isLinked ? 1 : 0);
    };
    report(clip.fadeIn, place / &AudioClip::fadeIn);
    report(clip.fadeOut, place / &AudioClip::fadeOut);
    if (fades.in == 0 && fades.out == 0) {
        return;
    }
    xml_.Attribute("fadeTimeUnit", kSeconds);
    if (fades.in > 0) {
        xml_.Attribute("fadeInTime", writing_.Seconds(fades.in));
    }
    if (fades.out > 0) {
        xml_.Attribute("fadeOutTime", writing_.Seconds(fades.out));
    }
}

void ClipWriter::WriteContent(const Play& play, const ParameterLane& gain,
                              const ParameterLane& pan) {
    const bool hasGain = !ChangesNothing(gain, 1);
    const bool hasPan = !ChangesNothing(pan, ToNormalizedPan(0));
    if (!hasGain && !hasPan) {
        WriteMedia(play);
        return;
    }
    xml_.Open("Lanes").Attribute("id", NextId());
    WriteMedia(play);
    if (hasGain) {
        WriteEnvelope("gain", kLinear, gain, play.start);
    }
    if (hasPan) {
        WriteEnvelope("pan", kNormalized, pan, play.start);
    }
    xml_.Close();
}

void ClipWriter::WriteMedia(const Play& play) {
    const bool isStretched = play.stretch != 1;
    if (isStretched) {
        xml_.Open("Warps")
            .Attribute("id", NextId())
            .Attribute("timeUnit", kSeconds)
            .Attribute("contentTimeUnit", kSeconds);
    }
    xml_.Open("Audio")
        .Attribute("id", NextId())
        .Attribute("channels", play.media.fact.channels)
        .Attribute("sampleRate", play.media.fact.sampleRate)
        .Attribute("duration", play.fileSeconds);
    WriteFile(play.media);
    xml_.Close();
    if (!isStretched) {
        return;
    }
    for (const double content : {0.0, play.fileSeconds}) {
        xml_.Open("Warp")
            .Attribute("time", content * play.stretch)
            .Attribute("contentTime", content);
        xml_.Close();
    }
    xml_.Close();
}

void ClipWriter::WriteFile(const WrittenMedia& media) {
    xml_.Open("File").Attribute("path", media.path).Attribute("external", media.isExternal);
    xml_.Close();
}

void ClipWriter::WriteEnvelope(const char* expression, std::string_view unit,
                               const ParameterLane& lane, double start) {
    xml_.Open("Points").Attribute("id", NextId()).Attribute("unit", unit);
    xml_.Open("Target").Attribute("expression", expression);
    xml_.Close();
    WritePoints(writing_,
                lane.points.empty() ? std::vector{LanePoint{.value = lane.value}} : lane.points,
                start);
    xml_.Close();
}

// Controls of a clip

ParameterLane ClipWriter::GainOf(const AudioClip& clip, const ModelPath& place) {
    const orvo::Conventions& conventions = writing_.job.options.conventions;
    const double unchanged = conventions.levels == orvo::LevelUnit::Decibels ? 0 : 1;
    const ModelPath where = place / &AudioClip::gain;
    ReportControl(clip.gain, where, writing_.job.reporter);
    ParameterLane lane =
        ClipLaneOf(clip.gain, unchanged, clip, conventions, where, writing_.job.reporter);
    ReportHidden(lane, where);
    lane.value = ToAmplitude(lane.value, conventions.levels);
    lane.points = AmplitudesOf(std::move(lane.points), conventions.levels);
    return lane;
}

ParameterLane ClipWriter::PanOf(const AudioClip& clip, const ModelPath& place) {
    const ModelPath where = place / &AudioClip::pan;
    ReportControl(clip.pan, where, writing_.job.reporter);
    ParameterLane lane = ClipLaneOf(clip.pan, 0, clip, writing_.job.options.conventions, where,
                                    writing_.job.reporter);
    ReportHidden(lane, where);
    lane.value = ToNormalizedPan(lane.value);
    for (LanePoint& point : lane.points) {
        point.value = ToNormalizedPan(point.value);
    }
    return lane;
}

/// A clip has either a value or a lane. What is read gets the first value of the lane.
void ClipWriter::ReportHidden(const ParameterLane& lane, const ModelPath& place) {
    if (!lane.points.empty() && lane.points.front().value != lane.value) {
        Report(Fidelity::Lost, place, "the value that the automation hides has no place",
               fmt::format("{}", lane.value));
    }
}

bool ClipWriter::IsMuted(const AudioClip& clip, const ModelPath& place) {
    const ModelPath where = place / &AudioClip::mute;
    ReportControl(clip.mute, where, writing_.job.reporter);
    const ParameterLane lane = LaneOf(clip.mute, 0, where, writing_.job.reporter);
    ReportSwitch(lane, where, writing_.job.reporter);
    if (!lane.points.empty()) {
        Report(Fidelity::Lost, where, "a clip is muted all the time or never");
    }
    return lane.value >= kOnFrom;
}

void ClipWriter::ReportOverlaps(const std::vector<AudioClip>& clips, const ModelPath& place) {
    std::set<std::pair<std::size_t, std::uint32_t>> carried;  // a clip and the id of its partner
    for (const Overlap& overlap : OverlapsOf(clips)) {
        if (IsCarried(overlap, clips)) {
            carried.emplace(overlap.first, clips[overlap.second].id);
            carried.emplace(overlap.second, clips[overlap.first].id);
        } else if (!overlap.isCrossfade &&
                   !writing_.job.session.mixingOptions.playOverlappingClips) {
            Report(Fidelity::Approximated, place / overlap.second,
                   "which of two overlapping clips covers the other one has no place");
        }
    }
    for (std::size_t i = 0; i < clips.size(); ++i) {
        for (const auto link : {&AudioClip::crossFadeHeadClipId, &AudioClip::crossFadeTailClipId}) {
            const std::int32_t partner = clips[i].*link;
            if (partner >= 0 && !carried.contains({i, static_cast<std::uint32_t>(partner)})) {
                Report(Fidelity::Lost, place / i / link,
                       "a link of clips that do not cross has no place",
                       fmt::format("{}", partner));
            }
        }
    }
}

// Help

std::string ClipWriter::NextId() {
    return fmt::format("c{}", ++count_);
}

void ClipWriter::Report(Fidelity fidelity, const ModelPath& place, std::string_view what,
                        std::string_view value) {
    writing_.job.reporter.Add(fidelity, place, what, value);
}

}  // namespace toolkit::interchange::dawproject
