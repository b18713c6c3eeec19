#include <orvo/Tables.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <sstream>
#include <utility>

#include <orvo/Lookup.h>
#include "session/MemberKey.h"
#include "toolkit/ClipSummary.h"
#include "toolkit/SessionSummary.h"
#include "toolkit/TrackSummary.h"
#include "toolkit/media/MediaFile.h"

namespace orvo {
namespace {

using Cell = TableCell;
using toolkit::ClipSummary;
using toolkit::EffectSummary;
using toolkit::MediaSummary;
using toolkit::TrackSummary;

/// A column, and how its cells are made of what the rows are about.
template <class Subject>
struct Column {
    TableColumn text;
    Cell (*cell)(const Subject&);
};

Cell Whole(std::integral auto number) {
    return static_cast<std::int64_t>(number);
}

template <class Number>
Cell Whole(const std::optional<Number>& number) {
    return number ? Whole(*number) : Cell();
}

/// The real number that people see: 0.1, where the number of double precision is 0.10000000149.
Cell Real(float number) {
    return std::strtod(fmt::format("{}", number).c_str(), nullptr);
}

template <class Word>
std::string WordOf(const Word& word) {
    std::ostringstream text;
    text << word;
    return text.str();
}

std::string Joined(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words) {
        joined += (joined.empty() ? "" : ", ") + word;
    }
    return joined;
}

Cell Seconds(const Session& session, std::int64_t samples) {
    return session.sampleRate == 0 ? Cell()
                                   : Cell(static_cast<double>(samples) / session.sampleRate);
}

// Tracks

constexpr Column<TrackSummary> kTrackColumns[] = {
    {{"kind", "video, audio, bus, master, metronome or instrument"},
     [](const TrackSummary& t) -> Cell { return toolkit::KindName(t.kind); }},
    {{"id", "the track's number"}, [](const TrackSummary& t) { return Whole(t.id); }},
    {{"name", "its name"}, [](const TrackSummary& t) -> Cell { return t.name; }},
    {{"channels", "mono, stereo or fivePointOne; notSaid if the session does not say it"},
     [](const TrackSummary& t) -> Cell { return WordOf(t.audioChannelType); }},
    {{"input", "the port that it records from"},
     [](const TrackSummary& t) -> Cell { return t.input; }},
    {{"midiInput", "the MIDI input of an instrument"},
     [](const TrackSummary& t) -> Cell { return t.midiInput; }},
    {{"output", "the track or port that it goes to"},
     [](const TrackSummary& t) -> Cell { return t.output; }},
    {{"muted", "whether its mute is on"}, [](const TrackSummary& t) -> Cell { return t.muted; }},
    {{"solo", "whether it is solo"}, [](const TrackSummary& t) -> Cell { return t.solo; }},
    {{"soloSafe", "whether it is heard while another track is solo"},
     [](const TrackSummary& t) -> Cell { return t.soloSafe; }},
    {{"recordArmed", "whether it is armed for recording"},
     [](const TrackSummary& t) -> Cell { return t.recordArmed; }},
    {{"monitoring", "whether its input is heard"},
     [](const TrackSummary& t) -> Cell { return t.monitoring; }},
    {{"phaseInverted", "whether its phase is inverted"},
     [](const TrackSummary& t) -> Cell { return t.phaseInverted; }},
    {{"summedToMono", "whether its channels are summed"},
     [](const TrackSummary& t) -> Cell { return t.sumToMono; }},
    {{"preRendered", "whether a rendered file is played in its place"},
     [](const TrackSummary& t) -> Cell { return t.preRendered; }},
    {{"visible", "whether the editor shows it"},
     [](const TrackSummary& t) -> Cell { return t.visible; }},
    {{"clips", "how many"}, [](const TrackSummary& t) { return Whole(t.clips); }},
    {{"sends", "how many"}, [](const TrackSummary& t) { return Whole(t.sends.size()); }},
    {{"effects", "how many slots its rack has"},
     [](const TrackSummary& t) { return Whole(t.effects.size()); }},
    {{"lanes", "how many automation lanes with keyframes, those of its clips included"},
     [](const TrackSummary& t) { return Whole(t.automation.lanes); }},
    {{"keyframes", "how many"},
     [](const TrackSummary& t) { return Whole(t.automation.keyframes); }},
};

// Clips

struct ClipSubject {
    const Session& session;
    const ClipSummary& clip;
    const MediaSummary* media;  ///< null if it has none
};

constexpr Column<ClipSubject> kClipColumns[] = {
    {{"trackID", "the number of its track"},
     [](const ClipSubject& s) { return Whole(s.clip.trackId); }},
    {{"track", "the name of its track"},
     [](const ClipSubject& s) -> Cell { return s.clip.trackName; }},
    {{"id", "the clip's number"}, [](const ClipSubject& s) { return Whole(s.clip.id); }},
    {{"name", "its name"}, [](const ClipSubject& s) -> Cell { return s.clip.name; }},
    {{"start", "where it starts, in samples"},
     [](const ClipSubject& s) { return Whole(s.clip.start); }},
    {{"startSeconds", "the same in seconds"},
     [](const ClipSubject& s) { return Seconds(s.session, s.clip.start); }},
    {{"duration", "in samples"}, [](const ClipSubject& s) { return Whole(s.clip.duration); }},
    {{"durationSeconds", "in seconds"},
     [](const ClipSubject& s) { return Seconds(s.session, s.clip.duration); }},
    {{"fileID", "the number of its media file; empty: it has none"},
     [](const ClipSubject& s) { return s.clip.fileId == kNoId ? Cell() : Whole(s.clip.fileId); }},
    {{"media", "the path of that file"},
     [](const ClipSubject& s) { return s.media != nullptr ? Cell(s.media->path) : Cell(); }},
    {{"sourceIn", "the clip's first sample in that file"},
     [](const ClipSubject& s) { return Whole(s.clip.sourceInPoint); }},
    {{"group", "the groups that it belongs to"},
     [](const ClipSubject& s) -> Cell { return s.clip.group; }},
    {{"notes", "missing, offline, muted, looped and so on, as `orvo info --clips` shows them"},
     [](const ClipSubject& s) -> Cell { return Joined(s.clip.marks); }},
};

// Media

struct MediaSubject {
    const MediaSummary& media;
    std::size_t clips;
};

constexpr Column<MediaSubject> kMediaColumns[] = {
    {{"id", "the file's number"}, [](const MediaSubject& s) { return Whole(s.media.id); }},
    {{"path", "its full path"}, [](const MediaSubject& s) -> Cell { return s.media.path; }},
    {{"found", "whether there is such a file"},
     [](const MediaSubject& s) -> Cell { return s.media.found; }},
    {{"handler", "what imported it"},
     [](const MediaSubject& s) -> Cell { return s.media.handlerName; }},
    {{"clips", "how many play it"}, [](const MediaSubject& s) { return Whole(s.clips); }},
};

// Effects

/// The owner of a rack, a send or a lane: a track, or a clip on it.
struct Owner {
    const AudioTrack* track;
    const AudioClip* clip = nullptr;
};

struct EffectSubject {
    Owner owner;
    const EffectSummary& effect;
};

template <class Subject>
constexpr Column<Subject> kTrackId = {{"trackID", "the number of the track"},
                                      [](const Subject& s) { return Whole(s.owner.track->id); }};
template <class Subject>
constexpr Column<Subject> kTrackName = {
    {"track", "its name"}, [](const Subject& s) -> Cell { return s.owner.track->name; }};
template <class Subject>
constexpr Column<Subject> kClipId = {
    {"clipID", "the number of the clip; empty: it belongs to the track itself"},
    [](const Subject& s) { return s.owner.clip != nullptr ? Whole(s.owner.clip->id) : Cell(); }};

constexpr Column<EffectSubject> kEffectColumns[] = {
    kTrackId<EffectSubject>,
    kTrackName<EffectSubject>,
    kClipId<EffectSubject>,
    {{"slot", "its place in the rack"},
     [](const EffectSubject& s) { return Whole(s.effect.slotIndex); }},
    {{"name", "its name, or else its identifier; empty: an empty slot"},
     [](const EffectSubject& s) -> Cell { return s.effect.name; }},
    {{"preset", "the name of its preset"},
     [](const EffectSubject& s) -> Cell { return s.effect.preset; }},
    {{"bypassed", "whether the signal bypasses it"},
     [](const EffectSubject& s) -> Cell { return s.effect.bypassed; }},
    {{"sideChainChannels", "0: no side chain keys it"},
     [](const EffectSubject& s) { return Whole(s.effect.sideChainChannels); }},
    {{"parameters", "how many"}, [](const EffectSubject& s) { return Whole(s.effect.parameters); }},
    {{"stateBytes", "the size of its saved state"},
     [](const EffectSubject& s) { return Whole(s.effect.presetBytes); }},
    {{"lanes", "how many automation lanes with keyframes"},
     [](const EffectSubject& s) { return Whole(s.effect.automation.lanes); }},
};

// Sends

struct SendSubject {
    Owner owner;
    const Feed<const Session>& feed;
};

/// The first parameter of a control.
Cell ValueOf(const std::optional<Component>& component) {
    return component && !component->parameters.empty() &&
                   component->parameters.begin()->second.value
               ? Real(*component->parameters.begin()->second.value)
               : Cell();
}

constexpr Column<SendSubject> kSendColumns[] = {
    kTrackId<SendSubject>,
    kTrackName<SendSubject>,
    {{"slot", "its place among the track's sends"},
     [](const SendSubject& s) { return Whole(s.feed.send->slotIndex); }},
    {{"toID", "the number of the track that it feeds; -1: none"},
     [](const SendSubject& s) { return Whole(s.feed.send->sendOutputId); }},
    {{"to", "the name of that track; empty: the session has no such track"},
     [](const SendSubject& s) {
         return s.feed.target != nullptr ? Cell(s.feed.target->name) : Cell();
     }},
    {{"component", "of that track, if it is a side chain"},
     [](const SendSubject& s) { return Whole(s.feed.component); }},
    {{"preFader", "whether it is taken before the fader"},
     [](const SendSubject& s) -> Cell { return s.feed.send->preFader; }},
    {{"level", "the value of its level, in the host's unit"},
     [](const SendSubject& s) { return ValueOf(s.feed.send->sendComponent); }},
    {{"pan", "the value of its pan, in the host's unit"},
     [](const SendSubject& s) { return ValueOf(s.feed.send->panComponent); }},
};

// Automation

struct KeyframeSubject {
    const Session& session;
    Owner owner;
    std::string control;
    std::uint32_t index;
    const Parameter& parameter;
    const Keyframe& keyframe;
};

constexpr Column<KeyframeSubject> kKeyframeColumns[] = {
    kTrackId<KeyframeSubject>,
    kTrackName<KeyframeSubject>,
    kClipId<KeyframeSubject>,
    {{"control", "the control, such as `trackFader` or `sendPan 2`, or the slot of an effect"},
     [](const KeyframeSubject& s) -> Cell { return s.control; }},
    {{"parameter", "its number"}, [](const KeyframeSubject& s) { return Whole(s.index); }},
    {{"parameterName", "its name"},
     [](const KeyframeSubject& s) -> Cell { return s.parameter.name; }},
    {{"position", "in samples, on the timeline of the track or clip"},
     [](const KeyframeSubject& s) { return Whole(s.keyframe.sampleOffset); }},
    {{"positionSeconds", "the same in seconds"},
     [](const KeyframeSubject& s) { return Seconds(s.session, s.keyframe.sampleOffset); }},
    {{"value", "in the parameter's unit"},
     [](const KeyframeSubject& s) { return Real(s.keyframe.value); }},
    {{"type", "linear or hold"},
     [](const KeyframeSubject& s) -> Cell { return WordOf(s.keyframe.type); }},
};

/// Collects the keyframes of a track and its clips.
class Automation {
public:
    template <class Take>
    static void Of(const Session& session, const AudioTrack& track, Take take) {
        const Automation automation(session);
        const Owner owner{&track};
        automation.OfControl(owner, KeyOf(&AudioTrack::fader), track.fader, take);
        automation.OfControl(owner, KeyOf(&AudioTrack::mute), track.mute, take);
        automation.OfControl(owner, KeyOf(&AudioTrack::pan), track.pan, take);
        automation.OfControl(owner, KeyOf(&AudioTrack::eq), track.eq, take);
        automation.OfSends(owner, take);
        automation.OfRack(owner, track.effectsRack, take);
        for (const AudioClip& clip : track.clips) {
            const Owner clipOwner{&track, &clip};
            automation.OfControl(clipOwner, KeyOf(&AudioClip::gain), clip.gain, take);
            automation.OfControl(clipOwner, KeyOf(&AudioClip::mute), clip.mute, take);
            automation.OfControl(clipOwner, KeyOf(&AudioClip::pan), clip.pan, take);
            automation.OfRack(clipOwner, clip.effectsRack, take);
        }
    }

private:
    explicit Automation(const Session& session) : session_(session) {}

    template <class Take>
    void OfControl(const Owner& owner, std::string_view control,
                   const std::optional<Component>& component, Take take) const {
        if (!component) {
            return;
        }
        for (const auto& [index, parameter] : component->parameters) {
            if (parameter.automation) {
                for (const Keyframe& keyframe : parameter.automation->keyframes) {
                    take(KeyframeSubject{session_, owner, std::string(control), index, parameter,
                                         keyframe});
                }
            }
        }
    }

    template <class Take>
    void OfSends(const Owner& owner, Take take) const {
        if (!owner.track->sendList) {
            return;
        }
        for (const std::optional<SendSlot>& send : owner.track->sendList->slots) {
            if (send) {
                const auto numbered = [&send](std::string_view key) {
                    return std::string(key) + " " + std::to_string(send->slotIndex);
                };
                OfControl(owner, numbered(KeyOf(&SendSlot::sendComponent)), send->sendComponent,
                          take);
                OfControl(owner, numbered(KeyOf(&SendSlot::panComponent)), send->panComponent,
                          take);
            }
        }
    }

    template <class Take>
    void OfRack(const Owner& owner, const std::optional<EffectsRack>& rack, Take take) const {
        if (!rack) {
            return;
        }
        OfControl(owner, KeyOf(&EffectsRack::mix), rack->mix, take);
        OfControl(owner, KeyOf(&EffectsRack::input), rack->input, take);
        OfControl(owner, KeyOf(&EffectsRack::output), rack->output, take);
        for (const std::optional<EffectsSlot>& slot : rack->slots) {
            if (slot) {
                OfControl(owner, "slot " + std::to_string(slot->slotIndex), slot->component, take);
            }
        }
    }

    const Session& session_;
};

// All tables

template <class Subject, std::size_t Count>
TableRow RowOf(const Column<Subject> (&columns)[Count], const Subject& subject) {
    TableRow row;
    for (const Column<Subject>& column : columns) {
        row.push_back(column.cell(subject));
    }
    return row;
}

template <class Subject, std::size_t Count>
constexpr std::array<TableColumn, Count> TextsOf(const Column<Subject> (&columns)[Count]) {
    std::array<TableColumn, Count> texts;
    std::ranges::transform(columns, texts.begin(), &Column<Subject>::text);
    return texts;
}

Table TracksOf(const Session& session) {
    Table table;
    for (const TrackSummary& track : toolkit::SummariseTracks(session)) {
        table.push_back(RowOf(kTrackColumns, track));
    }
    return table;
}

std::vector<MediaSummary> MediaIn(const Session& session) {
    return toolkit::Summarise(session, toolkit::IsMediaFile).media;
}

Table ClipsOf(const Session& session) {
    Table table;
    const std::vector<MediaSummary> media = MediaIn(session);
    for (const ClipSummary& clip : toolkit::SummariseClips(session, media)) {
        const auto file =
            clip.fileId ? std::ranges::find(media, *clip.fileId, &MediaSummary::id) : media.end();
        table.push_back(RowOf(kClipColumns,
                              ClipSubject{session, clip, file != media.end() ? &*file : nullptr}));
    }
    return table;
}

Table MediaOf(const Session& session) {
    Table table;
    for (const MediaSummary& media : MediaIn(session)) {
        const auto clips = ClipsOfFile(session, media.id);
        table.push_back(
            RowOf(kMediaColumns, MediaSubject{media, clips.audio.size() + clips.video.size()}));
    }
    return table;
}

void AddEffects(const Owner& owner, const std::optional<EffectsRack>& rack, Table& table) {
    for (const EffectSummary& effect : toolkit::SummariseEffects(rack)) {
        table.push_back(RowOf(kEffectColumns, EffectSubject{owner, effect}));
    }
}

Table EffectsOf(const Session& session) {
    Table table;
    ForEachAudioTrack(session, [&table](const AudioTrack& track) {
        AddEffects({&track}, track.effectsRack, table);
        for (const AudioClip& clip : track.clips) {
            AddEffects({&track, &clip}, clip.effectsRack, table);
        }
    });
    return table;
}

Table AutomationOf(const Session& session) {
    Table table;
    ForEachAudioTrack(session, [&](const AudioTrack& track) {
        Automation::Of(session, track, [&table](const KeyframeSubject& keyframe) {
            table.push_back(RowOf(kKeyframeColumns, keyframe));
        });
    });
    return table;
}

Table SendsOf(const Session& session) {
    Table table;
    const SessionIndex index(session);
    ForEachAudioTrack(session, [&](const AudioTrack& track) {
        for (const Feed<const Session>& feed : index.FeedsOf(track)) {
            if (feed.send != nullptr) {
                table.push_back(RowOf(kSendColumns, SendSubject{{&track}, feed}));
            }
        }
    });
    return table;
}

// As text

/// @param escape  what becomes of a text
template <class Escape>
std::string TextOf(const Cell& cell, Escape escape) {
    if (const auto* const text = std::get_if<std::string>(&cell)) {
        return escape(*text);
    }
    if (const auto* const truth = std::get_if<bool>(&cell)) {
        return *truth ? "true" : "false";
    }
    if (const auto* const whole = std::get_if<std::int64_t>(&cell)) {
        return fmt::format("{}", *whole);
    }
    const auto* const real = std::get_if<double>(&cell);
    return real != nullptr ? fmt::format("{}", *real) : std::string();
}

template <class Escape>
std::string LineOf(std::span<const TableCell> row, const char* between, const char* end,
                   Escape escape) {
    std::string line;
    for (const TableCell& cell : row) {
        line += &cell != row.data() ? between : "";
        line += TextOf(cell, escape);
    }
    return line + end;
}

std::string InCsv(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == text.npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character;
        quoted += character == '"' ? "\"" : "";
    }
    return quoted + "\"";
}

std::string InTsv(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        constexpr std::string_view kSpecial = "\t\n\r\\";
        constexpr std::string_view kLetters = "tnr\\";
        const std::size_t place = kSpecial.find(character);
        escaped +=
            place == kSpecial.npos ? std::string(1, character) : std::string{'\\', kLetters[place]};
    }
    return escaped;
}

}  // namespace

std::span<const TableColumn> ColumnsOf(TableKind kind) {
    static constexpr auto kTracks = TextsOf(kTrackColumns);
    static constexpr auto kClips = TextsOf(kClipColumns);
    static constexpr auto kMedia = TextsOf(kMediaColumns);
    static constexpr auto kEffects = TextsOf(kEffectColumns);
    static constexpr auto kSends = TextsOf(kSendColumns);
    static constexpr auto kKeyframes = TextsOf(kKeyframeColumns);
    switch (kind) {
        case TableKind::Tracks:
            return kTracks;
        case TableKind::Clips:
            return kClips;
        case TableKind::Media:
            return kMedia;
        case TableKind::Effects:
            return kEffects;
        case TableKind::Sends:
            return kSends;
        case TableKind::Automation:
            return kKeyframes;
    }
    return {};
}

Table MakeTable(const Session& session, TableKind kind) {
    switch (kind) {
        case TableKind::Tracks:
            return TracksOf(session);
        case TableKind::Clips:
            return ClipsOf(session);
        case TableKind::Media:
            return MediaOf(session);
        case TableKind::Effects:
            return EffectsOf(session);
        case TableKind::Sends:
            return SendsOf(session);
        case TableKind::Automation:
            return AutomationOf(session);
    }
    return {};
}

std::string CsvLine(std::span<const TableCell> row) {
    return LineOf(row, ",", "\r\n", InCsv);
}

std::string TsvLine(std::span<const TableCell> row) {
    return LineOf(row, "\t", "\n", InTsv);
}

}  // namespace orvo
