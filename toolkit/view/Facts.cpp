#include "toolkit/view/Facts.h"

#include <fmt/format.h>

#include <algorithm>

#include "toolkit/SessionSummary.h"
#include "toolkit/view/Changes.h"

namespace toolkit {
namespace {

using orvo::Layout;
using orvo::LayoutRow;
using orvo::RowKind;

const char* KindWord(RowKind kind) {
    switch (kind) {
        case RowKind::Video:
            return "Video";
        case RowKind::Audio:
            return "Audio";
        case RowKind::Bus:
            return "Bus";
        case RowKind::Master:
            return "Master";
        case RowKind::Metronome:
            return "Metronome";
        case RowKind::Instrument:
            return "Instrument";
    }
    return "";
}

std::string ChannelsWord(orvo::ChannelType channels) {
    if (channels == orvo::ChannelType::NotSaid) {
        return "";
    }
    const auto name = ChannelLayoutName(channels);
    return name ? *name : Counted(static_cast<std::size_t>(channels), "channel");
}

void Add(std::string& facts, const std::string& fact) {
    facts += (facts.empty() || fact.empty() ? "" : " · ") + fact;
}

}  // namespace

std::string NameOf(const LayoutRow& row) {
    return row.name.empty() ? fmt::format("{} {}", KindWord(row.kind), row.id) : row.name;
}

std::string NameOf(const Layout& layout, const orvo::LayoutBox& box) {
    if (!box.name.empty() || !box.media) {
        return box.name;
    }
    const std::string& path = layout.media[*box.media].path;
    return path.substr(path.find_last_of('/') + 1);
}

std::string FactsOf(const LayoutRow& row) {
    std::string facts = row.hidden ? "Hidden" : "";
    Add(facts, row.change ? WordOf(*row.change) : "");
    Add(facts, KindWord(row.kind));
    Add(facts, ChannelsWord(row.channels));
    return row.output.empty() ? facts : facts + " → " + row.output;
}

std::string FactsOf(const Layout& layout) {
    std::size_t clips = 0;
    for (const LayoutRow& row : layout.rows) {
        clips += row.boxes.size();
    }
    const auto missing = static_cast<std::size_t>(
        std::ranges::count(layout.media, false, &orvo::LayoutMedia::found));
    const std::string media = Counted(layout.media.size(), "media file");
    std::string facts = fmt::format("{:g} kHz", layout.sampleRate / 1000.0);
    Add(facts, fmt::format("{}-bit", layout.bitDepth));
    Add(facts, ChannelsWord(layout.channels));
    Add(facts, Counted(layout.rows.size(), "track"));
    Add(facts, Counted(clips, "clip"));
    Add(facts, missing > 0 ? fmt::format("{} of {} missing", missing, media) : media);
    return facts;
}

std::string DescriptionOf(const Layout& layout) {
    std::string names;
    for (const LayoutRow& row : layout.rows) {
        names += (names.empty() ? "" : ", ") + NameOf(row);
    }
    return fmt::format("A timeline from {} to {}: {}. Tracks from top to bottom: {}.",
                       orvo::PositionLabel(layout, layout.from),
                       orvo::PositionLabel(layout, layout.to), FactsOf(layout), names);
}

std::string Counted(std::size_t count, const char* thing) {
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

}  // namespace toolkit
