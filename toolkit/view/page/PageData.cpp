#include "toolkit/view/page/PageData.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <orvo/Times.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <span>
#include <type_traits>
#include <unordered_map>

#include "platform/kelcore/BinaryText.h"
#include "session/MemberKey.h"
#include "toolkit/Saturating.h"
#include "toolkit/SessionSummary.h"
#include "toolkit/view/Changes.h"
#include "toolkit/view/Palette.h"
#include "toolkit/view/page/PageSounds.h"
#include "toolkit/view/page/PageText.h"

namespace orvo::page {
namespace {

// The flags are those of web/src/picture.ts.
constexpr std::int64_t kLooped = 1;
constexpr std::int64_t kStretched = 2;
constexpr std::int64_t kMutedBox = 4;
constexpr std::int64_t kOffline = 8;
constexpr std::int64_t kLocked = 16;
constexpr std::int64_t kSelected = 32;
constexpr std::int64_t kMissing = 64;

constexpr std::int64_t kMutedRow = 1;
constexpr std::int64_t kSolo = 2;
constexpr std::int64_t kArmed = 4;
constexpr std::int64_t kHidden = 8;
constexpr std::int64_t kSelectedRow = 16;

constexpr std::int64_t kNone = -1;

void AppendValue(std::string& out, std::int64_t value) {
    fmt::format_to(std::back_inserter(out), FMT_COMPILE("{}"), value);
}

/// In the precision of a picture.
void AppendValue(std::string& out, double value) {
    if (std::isfinite(value)) {
        fmt::format_to(std::back_inserter(out), FMT_COMPILE("{:.7g}"), value);
    } else {
        out += "null";
    }
}

/// A place in a list, or `kNone`.
std::int64_t PlaceOf(const std::optional<std::size_t>& place) {
    return place ? static_cast<std::int64_t>(*place) : kNone;
}

/// The texts of a page, each once.
class Strings {
public:
    std::int64_t Add(std::string_view text) {
        const auto [found, isNew] = numbers_.try_emplace(text, texts_.size());
        if (isNew) {
            texts_.push_back(text);
        }
        return static_cast<std::int64_t>(found->second);
    }

    const std::vector<std::string_view>& Texts() const { return texts_; }

private:
    std::unordered_map<std::string_view, std::size_t> numbers_{};
    std::vector<std::string_view> texts_{};
};

/// The hues of a page, each once.
class Hues {
public:
    Hues() { places_.fill(kNone); }

    std::int64_t Add(const std::optional<double>& hue) {
        if (!hue) {
            return kNone;
        }
        std::int64_t& place = places_[static_cast<std::size_t>(toolkit::WholeDegrees(*hue))];
        if (place == kNone) {
            place = static_cast<std::int64_t>(hues_.size());
            hues_.push_back(*hue);
        }
        return place;
    }

    const std::vector<double>& All() const { return hues_; }

private:
    std::array<std::int64_t, 360> places_{};
    std::vector<double> hues_{};
};

/// A list of things as an object of columns.
template <class Thing>
class Table {
public:
    Table(std::string& out, std::string_view name, const std::vector<Thing>& things)
        : out_(out), things_(things) {
        fmt::format_to(std::back_inserter(out_), ",\"{}\":{{\"count\":{}", name, things.size());
    }
    ~Table() { out_ += '}'; }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    template <class ValueOf>
    Table& Column(std::string_view name, const ValueOf& valueOf) {
        using Value = std::invoke_result_t<ValueOf, const Thing&>;
        std::vector<Value> values;
        values.reserve(things_.size());
        for (const Thing& thing : things_) {
            values.push_back(valueOf(thing));
        }
        fmt::format_to(std::back_inserter(out_), ",\"{}\":", name);
        if (std::ranges::adjacent_find(values, std::not_equal_to<>()) == values.end()) {
            AppendValue(out_, values.empty() ? Value{} : values.front());
            return *this;
        }
        char separator = '[';
        for (const Value& value : values) {
            out_ += separator;
            AppendValue(out_, value);
            separator = ',';
        }
        out_ += ']';
        return *this;
    }

private:
    std::string& out_;
    const std::vector<Thing>& things_;
};

struct PlacedBox {
    const LayoutBox* layout;
    std::int64_t crossfade;  ///< how many boxes later the one is into which it fades; 0: none
};

struct FadeOfBox {
    std::int64_t box = 0;
    bool isOut = false;
    LayoutFade fade{};
};

/// The things of a layout side by side, in the order of rows.
struct Things {
    std::vector<const LayoutRow*> rows{};
    std::vector<PlacedBox> boxes{};
    std::vector<FadeOfBox> fades{};
    std::vector<const LayoutLane*> lanes{};
    std::vector<const LayoutKeyframe*> keyframes{};
};

void AddLanes(Things& things, const std::vector<LayoutLane>& lanes) {
    for (const LayoutLane& lane : lanes) {
        things.lanes.push_back(&lane);
        for (const LayoutKeyframe& keyframe : lane.keyframes) {
            things.keyframes.push_back(&keyframe);
        }
    }
}

void AddBox(Things& things, const LayoutBox& box, std::size_t placeInRow) {
    const auto number = static_cast<std::int64_t>(things.boxes.size());
    const auto place = static_cast<std::int64_t>(placeInRow);
    things.boxes.push_back({&box, box.crossfadesInto ? PlaceOf(box.crossfadesInto) - place : 0});
    if (box.fadeIn) {
        things.fades.push_back({number, false, *box.fadeIn});
    }
    if (box.fadeOut) {
        things.fades.push_back({number, true, *box.fadeOut});
    }
    AddLanes(things, box.lanes);
}

Things ThingsOf(const Layout& layout) {
    Things things;
    for (const LayoutRow& row : layout.rows) {
        things.rows.push_back(&row);
        AddLanes(things, row.lanes);
        for (std::size_t i = 0; i < row.boxes.size(); ++i) {
            AddBox(things, row.boxes[i], i);
        }
    }
    return things;
}

std::int64_t FlagsOf(const LayoutRow& row) {
    return (row.muted ? kMutedRow : 0) | (row.solo ? kSolo : 0) | (row.armed ? kArmed : 0) |
           (row.hidden ? kHidden : 0) | (row.selected ? kSelectedRow : 0);
}

std::int64_t FlagsOf(const LayoutBox& box, const Layout& layout) {
    const bool isMissing =
        box.kind != BoxKind::Midi && (!box.media || !layout.media[*box.media].found);
    return (box.looped ? kLooped : 0) | (box.stretched ? kStretched : 0) |
           (box.muted ? kMutedBox : 0) | (box.offline ? kOffline : 0) | (box.locked ? kLocked : 0) |
           (box.selected ? kSelected : 0) | (isMissing ? kMissing : 0);
}

/// What became of a thing; `kNone` if nothing is compared.
std::int64_t ChangeOf(const std::optional<LayoutChange>& change) {
    return change ? static_cast<std::int64_t>(*change) : kNone;
}

template <class Count>
std::int64_t CountOf(const Count& things) {
    return static_cast<std::int64_t>(things.size());
}

/// The strings of a page refer to this text.
std::string_view ChannelsOf(const LayoutRow& row) {
    static const auto kNames = [] {
        std::array<std::string, 7> names;
        for (std::uint32_t type = 0; type < names.size(); ++type) {
            names[type] = toolkit::ChannelLayoutName(ChannelType{type}).value_or("");
        }
        return names;
    }();
    const auto type = static_cast<std::size_t>(row.channels);
    return type < kNames.size() ? std::string_view(kNames[type]) : std::string_view();
}

void AppendRows(std::string& out, const Things& things, Strings& strings, Hues& hues) {
    using Row = const LayoutRow*;
    Table(out, "rows", things.rows)
        .Column("kind", [](Row row) { return static_cast<std::int64_t>(row->kind); })
        .Column("name", [&](Row row) { return strings.Add(row->name); })
        .Column("channels", [&](Row row) { return strings.Add(ChannelsOf(*row)); })
        .Column("output", [&](Row row) { return strings.Add(row->output); })
        .Column("colour", [&](Row row) { return hues.Add(toolkit::HueOf(*row)); })
        .Column("flags", [](Row row) { return FlagsOf(*row); })
        .Column("effects", [](Row row) { return static_cast<std::int64_t>(row->effects); })
        .Column("sends", [](Row row) { return static_cast<std::int64_t>(row->sends); })
        .Column("boxes", [](Row row) { return CountOf(row->boxes); })
        .Column("lanes", [](Row row) { return CountOf(row->lanes); })
        .Column("path", [&](Row row) { return strings.Add(row->path); })
        .Column("change", [](Row row) { return ChangeOf(row->change); });
}

void AppendBoxes(std::string& out, const Things& things, const Layout& layout, Strings& strings,
                 Hues& hues) {
    using Box = const PlacedBox&;
    Table(out, "boxes", things.boxes)
        .Column("kind", [](Box box) { return static_cast<std::int64_t>(box.layout->kind); })
        .Column("name", [&](Box box) { return strings.Add(box.layout->name); })
        .Column("start", [](Box box) { return box.layout->start; })
        .Column("length",
                [](Box box) {
                    return toolkit::SaturatingDifference(box.layout->end, box.layout->start);
                })
        .Column("colour", [&](Box box) { return hues.Add(box.layout->hue); })
        .Column("flags", [&](Box box) { return FlagsOf(*box.layout, layout); })
        .Column("media", [](Box box) { return PlaceOf(box.layout->media); })
        .Column("sourceStart", [](Box box) { return box.layout->sourceStart; })
        .Column("speed", [](Box box) { return box.layout->speed; })
        .Column("effects", [](Box box) { return static_cast<std::int64_t>(box.layout->effects); })
        .Column("takes", [](Box box) { return CountOf(box.layout->takes); })
        .Column("group", [](Box box) { return PlaceOf(box.layout->group); })
        .Column("crossfade", [](Box box) { return box.crossfade; })
        .Column("lanes", [](Box box) { return CountOf(box.layout->lanes); })
        .Column("index", [](Box box) { return static_cast<std::int64_t>(box.layout->index); })
        .Column("change", [](Box box) { return ChangeOf(box.layout->change); });
}

void AppendFades(std::string& out, const Things& things) {
    using Fade = const FadeOfBox&;
    Table(out, "fades", things.fades)
        .Column("box", [](Fade fade) { return fade.box; })
        .Column("out", [](Fade fade) { return std::int64_t{fade.isOut ? 1 : 0}; })
        .Column("length", [](Fade fade) { return fade.fade.length; })
        .Column("curve", [](Fade fade) { return static_cast<std::int64_t>(fade.fade.curve); });
}

void AppendLanes(std::string& out, const Things& things, Strings& strings) {
    using Lane = const LayoutLane*;
    Table(out, "lanes", things.lanes)
        .Column("name", [&](Lane lane) { return strings.Add(lane->name); })
        .Column("low", [](Lane lane) { return lane->low; })
        .Column("high", [](Lane lane) { return lane->high; })
        .Column("keyframes", [](Lane lane) { return CountOf(lane->keyframes); });
}

void AppendKeyframes(std::string& out, const Things& things) {
    using Keyframe = const LayoutKeyframe*;
    Table(out, "keyframes", things.keyframes)
        .Column("position", [](Keyframe keyframe) { return keyframe->position; })
        .Column("level", [](Keyframe keyframe) { return keyframe->level; })
        .Column("value", [](Keyframe keyframe) { return keyframe->value; })
        .Column("segment",
                [](Keyframe keyframe) { return static_cast<std::int64_t>(keyframe->segment); });
}

/// Appends `key`, and what `append` appends of each thing, as an array.
template <class List, class Append>
void AppendList(std::string& out, std::string_view key, const List& things, const Append& append) {
    fmt::format_to(std::back_inserter(out), ",\"{}\":", key);
    char separator = '[';
    for (const auto& thing : things) {
        out += separator;
        append(thing);
        separator = ',';
    }
    out += things.empty() ? "[]" : "]";
}

/// Levels in 127ths, which are finer than a pixel.
kelcore::byte ByteOf(float level) {
    constexpr float kMost = 127;
    const float bounded = std::isnan(level) ? 0 : std::clamp(level, -1.0F, 1.0F);
    return static_cast<kelcore::byte>(std::lround(bounded * kMost));
}

/// One level of each peak, as Base64.
std::string LevelsOf(const std::vector<Peak>& peaks, float Peak::*level) {
    std::vector<kelcore::byte> bytes;
    bytes.reserve(peaks.size());
    for (const Peak& peak : peaks) {
        bytes.push_back(ByteOf(peak.*level));
    }
    std::string text = kelcore::EncodeBinaryDataToUTF8String(bytes.data(), bytes.size());
    std::erase(text, '\n');
    return text;
}

void AppendWaveform(std::string& out, const Waveform& waveform) {
    const std::vector<Peak>* const peaks = waveform.Whole();
    if (peaks == nullptr) {
        return;
    }
    fmt::format_to(std::back_inserter(out),
                   R"(,"waveform":{{"sampleRate":{},"frames":{},"framesPerPeak":{},)"
                   R"("lowest":"{}","highest":"{}"}})",
                   waveform.sampleRate, waveform.frames, waveform.framesPerPeak,
                   LevelsOf(*peaks, &Peak::lowest), LevelsOf(*peaks, &Peak::highest));
}

std::vector<std::string> SoundAddresses(const Layout& layout, const PageOptions& options) {
    std::vector<std::string> addresses;
    if (options.audio == PageAudio::Linked) {
        addresses = options.mediaAddresses;
    }
    addresses.resize(layout.media.size());
    if (options.audio == PageAudio::Embedded) {
        for (const std::size_t media : MediaToHear(layout)) {
            addresses[media] = "#" + SoundId(media);
        }
    }
    return addresses;
}

void AppendMedia(std::string& out, const Layout& layout,
                 const std::vector<std::optional<Waveform>>& waveforms,
                 const std::vector<std::string>& sounds) {
    std::size_t place = 0;
    AppendList(out, "media", layout.media, [&](const LayoutMedia& media) {
        out += "{\"path\":";
        AppendJsonText(out, media.path);
        fmt::format_to(std::back_inserter(out), ",\"found\":{}", media.found);
        if (!sounds[place].empty()) {
            out += ",\"sound\":";
            AppendJsonText(out, sounds[place]);
        }
        if (place < waveforms.size() && waveforms[place]) {
            AppendWaveform(out, *waveforms[place]);
        }
        out += '}';
        ++place;
    });
}

/// The keys under which tracks have their clips, by kinds of boxes.
void AppendClipKeys(std::string& out) {
    const std::string_view keys[] = {KeyOf(&VideoTrack::clips), KeyOf(&AudioTrack::clips),
                                     KeyOf(&AudioTrack::midiClips)};
    AppendList(out, "clipKeys", std::span(keys),
               [&](std::string_view key) { AppendJsonText(out, key); });
}

void AppendGroups(std::string& out, const Layout& layout) {
    AppendList(out, "groups", layout.groups, [&](const LayoutGroup& group) {
        out += "{\"name\":";
        AppendJsonText(out, group.name);
        out += '}';
    });
}

/// How each `LayoutChange` is called and marked.
void AppendChanges(std::string& out, Hues& hues) {
    constexpr LayoutChange kChanges[] = {LayoutChange::Same,    LayoutChange::Added,
                                         LayoutChange::Removed, LayoutChange::Moved,
                                         LayoutChange::Changed, LayoutChange::Former};
    AppendList(out, "changes", std::span(kChanges), [&](LayoutChange change) {
        out += "{\"word\":";
        AppendJsonText(out, toolkit::WordOf(change));
        fmt::format_to(std::back_inserter(out), ",\"colour\":{}}}",
                       hues.Add(toolkit::HueOf(change)));
    });
}

/// How things of each hue are drawn.
void AppendColours(std::string& out, std::string_view key, toolkit::Palette palette, bool isMuted,
                   const Hues& hues) {
    AppendList(out, key, hues.All(), [&](double hue) {
        const toolkit::HueColours& colours = palette.Of(hue, isMuted);
        fmt::format_to(std::back_inserter(out),
                       R"({{"body":"{}","bar":"{}","edge":"{}","wave":"{}","text":"{}"}})",
                       toolkit::CssOf(colours.body), toolkit::CssOf(colours.bar),
                       toolkit::CssOf(colours.edge), toolkit::CssOf(colours.wave),
                       toolkit::CssOf(colours.text));
    });
}

void AppendPalettes(std::string& out, const Hues& hues) {
    AppendColours(out, "light", toolkit::Palette(Theme::Light), false, hues);
    AppendColours(out, "lightMuted", toolkit::Palette(Theme::Light), true, hues);
    AppendColours(out, "dark", toolkit::Palette(Theme::Dark), false, hues);
    AppendColours(out, "darkMuted", toolkit::Palette(Theme::Dark), true, hues);
}

/// Boxes as numbers among those of all rows.
void AppendNotes(std::string& out, const Layout& layout) {
    AppendList(out, "notes", layout.notes, [&](const LayoutNote& note) {
        std::size_t box = 0;
        for (std::size_t row = 0; note.box && row < *note.row; ++row) {
            box += layout.rows[row].boxes.size();
        }
        out += "{\"sentence\":";
        AppendJsonText(out, note.sentence);
        fmt::format_to(std::back_inserter(out), ",\"row\":{},\"box\":{}}}", PlaceOf(note.row),
                       note.box ? PlaceOf(box + *note.box) : kNone);
    });
}

void AppendCurves(std::string& out, const Layout& layout) {
    AppendList(out, "curves", layout.curves, [&](const Curve& curve) {
        char separator = '[';
        for (const float level : curve) {
            fmt::format_to(std::back_inserter(out), "{}{:.4g}", separator, level);
            separator = ',';
        }
        out += ']';
    });
}

/// The form in which `FormatPosition` writes positions.
std::string_view TimeFormOf(const Layout& layout, const std::optional<FrameRate>& rate) {
    if (layout.sampleRate == 0 || layout.timeFormat.format == TimeDisplay::Samples) {
        return "samples";
    }
    if (layout.timeFormat.format == TimeDisplay::BarsAndBeats) {
        return FormatBarsAndBeats(0, layout.sampleRate, layout.musicalTime) ? "bars" : "time";
    }
    return rate && FormatTimecode(0, layout.sampleRate, *rate) ? "timecode" : "time";
}

void AppendTime(std::string& out, const Layout& layout) {
    const auto rate = FrameRateOf(layout.timeFormat);
    const FrameRate shown = rate.value_or(FrameRate{});
    const MusicalTime& music = layout.musicalTime;
    fmt::format_to(std::back_inserter(out),
                   R"(,"time":{{"form":"{}","rate":{{"count":{},"ntsc":{},"dropFrame":{}}},)"
                   R"("beatsPerBar":{},"subdivisions":{},"beatsPerMinute":)",
                   TimeFormOf(layout, rate), shown.count, shown.ntsc, shown.dropFrame,
                   music.beatsPerBar, music.subdivisions);
    // All digits, because positions as text depend on them.
    out += std::isfinite(music.beatsPerMinute) ? fmt::format("{}", music.beatsPerMinute) : "0";
    out += '}';
}

}  // namespace

std::string DataOf(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
                   const PageOptions& options) {
    const Selection& selection = layout.selection;
    std::string out = "{\"title\":";
    AppendJsonText(out, options.title);
    out += ",\"watch\":";
    AppendJsonText(out, options.watch);
    const bool isCompared = std::ranges::any_of(
        layout.rows, [](const LayoutRow& row) { return row.change.has_value(); });
    fmt::format_to(std::back_inserter(out), ",\"compared\":{}", isCompared);
    fmt::format_to(std::back_inserter(out),
                   R"(,"audio":{},"sampleRate":{},"from":{},"to":{},"cursor":{},)"
                   R"("selection":[{},{}],"end":{})",
                   options.audio != PageAudio::None, layout.sampleRate, layout.from, layout.to,
                   layout.cursor, selection.start,
                   toolkit::SaturatingSum(selection.start, selection.duration), layout.end);
    AppendTime(out, layout);
    AppendClipKeys(out);
    const Things things = ThingsOf(layout);
    Strings strings;
    Hues hues;
    AppendRows(out, things, strings, hues);
    AppendBoxes(out, things, layout, strings, hues);
    AppendFades(out, things);
    AppendLanes(out, things, strings);
    AppendKeyframes(out, things);
    AppendMedia(out, layout, waveforms, SoundAddresses(layout, options));
    AppendGroups(out, layout);
    AppendCurves(out, layout);
    AppendChanges(out, hues);
    AppendPalettes(out, hues);
    AppendNotes(out, layout);
    AppendList(out, "strings", strings.Texts(),
               [&](std::string_view text) { AppendJsonText(out, text); });
    out += '}';
    return out;
}

}  // namespace orvo::page
