// Changes each field of a session, one after the other, and looks at what becomes of it in each
// kind of file. Nothing may be lost silently. docs/interchange.md has the result as a table.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <orvo/Interchange.h>
#include <orvo/Json.h>
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using nlohmann::json;
using orvo::Fidelity;
using orvo::InterchangeKindFacts;

// The session

orvo::Component LevelOf(float value) {
    orvo::Component component{.guid = "g", .componentId = "c", .name = "Level"};
    component.editorRect = {1, 2, 3, 4};
    component.parameters[0] = {
        .value = value,
        .name = "Level",
        .automation = orvo::AutomationLane{
            .keyframes = {{.value = value, .sampleOffset = 100, .type = orvo::KeyframeType::Linear},
                          {.value = value + 0.1F, .sampleOffset = 3000}}}};
    return component;
}

orvo::EffectsRack RackWithEverything() {
    orvo::EffectsRack rack{.mix = LevelOf(0.5F), .input = LevelOf(0.25F), .output = LevelOf(0.75F)};
    orvo::EffectsSlot slot{.slotIndex = 1, .sideChainChannels = 2, .busConfig = "b"};
    slot.inputChannels = {{.index = 0, .source = 1}};
    slot.outputChannels = {{.index = 1, .source = 0}};
    slot.component = LevelOf(0.5F);
    slot.component->name = "Echo";
    slot.component->presetName = "Hall";
    slot.component->presetChunk = {1, 2, 3};
    rack.slots = {slot};
    return rack;
}

orvo::AudioClip ClipWithEverything() {
    orvo::AudioClip clip{.id = 11,
                         .fileId = 5,
                         .sourceInPoint = 1000,
                         .duration = 48000,
                         .startPoint = 96000,
                         .hue = 120,
                         .name = "Hello"};
    clip.fadeIn = orvo::Fade{.endPoint = 480};
    clip.fadeOut = orvo::Fade{.startPoint = 47040, .endPoint = 48000};
    clip.stretch =
        orvo::ClipStretch{.stretchMode = orvo::StretchMode::Rendered, .stretchRatio = 1.25};
    clip.takes = {1, 2};
    clip.gain = LevelOf(-3);
    clip.mute = LevelOf(0);
    clip.pan = LevelOf(0.25F);
    clip.effectsRack = RackWithEverything();
    clip.editParameters = {{.slotIndex = 1, .parameterIndex = 0}};
    clip.properties = "p";
    clip.channelSources = {{0, 1}, {1, 0}};
    return clip;
}

orvo::AudioTrack TrackWithEverything() {
    orvo::AudioTrack track{.id = 1, .index = 1, .name = "Voice", .hue = 200};
    track.audioChannelType = orvo::ChannelType::Stereo;
    track.outputTrackId = 3;
    track.fader = LevelOf(-6);
    track.mute = LevelOf(0);
    track.pan = LevelOf(-0.5F);
    track.eq = LevelOf(1);
    track.effectsRack = RackWithEverything();
    track.editParameters = {{.slotIndex = 1, .parameterIndex = 0}};
    track.sendList.emplace().slots = {orvo::SendSlot{.slotIndex = 0,
                                                     .sendOutputId = 3,
                                                     .sendComponent = LevelOf(-12),
                                                     .panComponent = LevelOf(0.5F)}};
    track.clips = {ClipWithEverything()};
    return track;
}

orvo::Session SessionWithEveryField() {
    orvo::Session session;
    session.duration = 480'000;
    session.videoTracks = {{.id = 8, .index = 0, .name = "Picture", .hue = 40}};
    session.videoTracks[0].clips = {
        {.id = 15,
         .fileId = 6,
         .duration = 96000,
         .name = "Lamp",
         .format = orvo::VideoFormat{.timeScale = 25, .sampleSize = 1, .width = 16, .height = 9}}};
    session.audioTracks = {
        TrackWithEverything(),
        {.id = 2, .index = 2, .kind = orvo::TrackKind::Instrument, .name = "Bass"},
        {.id = 3, .index = 3, .kind = orvo::TrackKind::Bus, .name = "Room"},
        {.id = 4, .index = 4, .kind = orvo::TrackKind::Master, .name = "Master"}};
    session.audioTracks[1].instrument.emplace();
    session.audioTracks[1].midiClips = {
        {.id = 20, .duration = 48000, .startPoint = 1000, .name = "Line", .events = {1, 2}}};
    session.trackVisibilityPresets = {{.id = 1, .name = "All", .tracks = {{.trackId = 1}}}};
    session.clipGroups = {{.id = 1, .name = "Pair", .items = {{.trackId = 1, .clipId = 11}}}};
    session.properties = {{.key = "k", .value = "v"}};
    session.xmpMetadata =
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
        "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description "
        "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" dc:title=\"Song\"/></rdf:RDF></x:xmpmeta>";
    session.musicalTime = {.beatsPerMinute = 100, .beatsPerBar = 3, .noteLength = 4};
    session.files = {{.id = 5, .path = "/nowhere/a.wav"}, {.id = 6, .path = "/nowhere/b.mov"}};
    session.audioDevice.inputPorts = {{.id = 1, .name = "in"}};
    session.audioDevice.outputPorts = {{.id = 1, .name = "out"}};
    return session;
}

// Its fields

/// The keys on the way to a value, without places in lists.
std::string FieldOf(const json::json_pointer& place) {
    std::string field;
    for (json::json_pointer rest = place; !rest.empty(); rest.pop_back()) {
        const std::string& key = rest.back();
        if (key.find_first_not_of("0123456789") != std::string::npos) {
            field = field.empty() ? key : key + '.' + field;
        }
    }
    return field;
}

/// The first place of each field.
void CollectFields(const json& value, const json::json_pointer& place,
                   std::map<std::string, json::json_pointer>& fields) {
    if (value.is_structured() && !value.empty()) {
        for (const auto& [key, member] : value.items()) {
            CollectFields(member, value.is_array() ? place / std::stoul(key) : place / key, fields);
        }
    } else {
        fields.emplace(FieldOf(place), place);
    }
}

/// Other values that a field may have, of which the first one that a session takes is used.
std::vector<json> OthersThan(const json& value) {
    if (value.is_boolean()) {
        return {!value.get<bool>()};
    }
    if (value.is_number_integer()) {
        return {std::abs(2 * value.get<std::int64_t>() + 2)};
    }
    if (value.is_number()) {
        return {1.5 * value.get<double>() + 0.3};
    }
    if (value.is_string()) {
        // A word of an enumeration may stand as its number.
        std::vector<json> others = {value.get<std::string>() + "AQID"};
        for (int number = 0; number < 9; ++number) {
            others.emplace_back(number);
        }
        return others;
    }
    return {};
}

std::optional<orvo::Session> WithChange(const json& whole, const json::json_pointer& place) {
    for (const json& other : OthersThan(whole.at(place))) {
        json changed = whole;
        changed.at(place) = other;
        orvo::ReadResult read = orvo::FromJson(changed.dump());
        if (read && read.session != SessionWithEveryField()) {
            return std::move(read.session);
        }
    }
    return std::nullopt;
}

// What becomes of them

struct Written {
    std::string content;
    orvo::InterchangeReport report;
};

std::string ContentOf(const std::vector<std::filesystem::path>& files) {
    std::string content;
    for (const std::filesystem::path& file : files) {
        content += file.filename().string() + '\n' + test::ReadFile(file) + '\n';
    }
    return content;
}

Written Write(const orvo::Session& session, const InterchangeKindFacts& kind) {
    const auto folder = test::TemporaryFolder::InMemory();
    const orvo::ExportResult result = orvo::ExportSession(
        session, kind.kind, folder / ("out." + std::string(kind.name)), {.ownData = false});
    EXPECT_TRUE(result) << kind.name << testing::PrintToString(result.messages);
    return {.content = ContentOf(result.files), .report = result.report};
}

/// Whether one of the places is within the other.
bool IsOnTheWay(const std::string& place, const std::string& other) {
    const std::string& shorter = place.size() < other.size() ? place : other;
    const std::string& longer = place.size() < other.size() ? other : place;
    return longer.starts_with(shorter) &&
           (longer.size() == shorter.size() || longer[shorter.size()] == '/');
}

/// The word of a fact about a place that only one of two reports has.
std::optional<std::string> NewFact(const Written& before, const Written& after,
                                   const json::json_pointer& place) {
    for (const Fidelity fidelity : orvo::kFidelities) {
        const auto isNew = [&](const orvo::InterchangeFact& fact) {
            const auto& former = before.report.facts;
            return fact.fidelity == fidelity && IsOnTheWay(fact.place, place.to_string()) &&
                   std::ranges::find(former, fact) == former.end();
        };
        if (std::ranges::any_of(after.report.facts, isNew)) {
            std::ostringstream word;
            word << fidelity;
            return word.str();
        }
    }
    return std::nullopt;
}

/// What became of a field that was changed. The words of the table.
std::string FateOf(const Written& before, const Written& after, const json::json_pointer& place) {
    if (auto fact = NewFact(before, after, place)) {
        return *fact;
    }
    if (after.content != before.content) {
        return "carried";
    }
    return after.report != before.report ? "no place" : "nothing said";
}

/// What is said of things as wholes: a report may name one once, whatever is in it.
class FatesOfWholes {
public:
    FatesOfWholes(const json& session, const Written& before, const InterchangeKindFacts& kind)
        : session_(session), before_(before), kind_(kind) {}

    /// Takes away what is around a field, step by step, until that makes a difference.
    std::string Around(json::json_pointer place) {
        for (; !place.empty(); place.pop_back()) {
            const auto [known, isNew] = fates_.try_emplace(place.to_string());
            if (isNew) {
                known->second = WithoutIt(place);
            }
            if (known->second) {
                return *known->second;
            }
        }
        return "nothing said";
    }

private:
    /// No value if it makes no difference.
    std::optional<std::string> WithoutIt(const json::json_pointer& place) const {
        json without = session_;
        json& owner = without.at(place.parent_pointer());
        if (owner.is_array()) {
            owner.erase(std::stoul(place.back()));
        } else {
            owner.erase(place.back());
        }
        const orvo::ReadResult read = orvo::FromJson(without.dump());
        if (!read) {
            return std::nullopt;
        }
        const Written after = Write(read.session, kind_);
        if (after.content != before_.content) {
            return "nothing said";
        }
        if (const auto fact = NewFact(after, before_, place)) {
            return fact;
        }
        return after.report != before_.report ? std::optional("no place") : std::nullopt;
    }

    const json& session_;
    const Written& before_;
    const InterchangeKindFacts& kind_;
    std::map<std::string, std::optional<std::string>> fates_;
};

/// Names of things for other things, which a format may choose anew, and what describes the file.
bool IsForTheFileItself(const std::string& field) {
    static const std::set<std::string> kFields = {"formatVersion.major",
                                                  "formatVersion.minor",
                                                  "formatDescription",
                                                  "versionDependentValue",
                                                  "duration",
                                                  "audioTracks.id",
                                                  "audioTracks.midiClips.id",
                                                  "audioTracks.audioClips.id",
                                                  "videoTracks.id",
                                                  "videoTracks.videoClips.id",
                                                  "files.id",
                                                  "clipGroups.id"};
    return kFields.contains(field);
}

using Table = std::map<std::string, std::vector<std::string>>;

/// A session in which one field has another value.
struct Variant {
    std::string field{};
    json::json_pointer place{};
    orvo::Session session{};
};

std::vector<Variant> VariantsOf(const json& whole) {
    std::map<std::string, json::json_pointer> fields;
    CollectFields(whole, json::json_pointer(), fields);
    std::vector<Variant> variants;
    for (const auto& [field, place] : fields) {
        std::optional<orvo::Session> changed = WithChange(whole, place);
        if (changed && !IsForTheFileItself(field)) {
            variants.push_back({.field = field, .place = place, .session = std::move(*changed)});
        }
    }
    return variants;
}

Table FatesOfAllFields() {
    const json whole = json::parse(orvo::ToJson(SessionWithEveryField(), {.full = true}));
    const std::vector<Variant> variants = VariantsOf(whole);
    Table table;
    for (const InterchangeKindFacts& kind : orvo::InterchangeKinds()) {
        const Written before = Write(SessionWithEveryField(), kind);
        FatesOfWholes wholes(whole, before, kind);
        for (const Variant& variant : variants) {
            std::string fate = FateOf(before, Write(variant.session, kind), variant.place);
            if (fate == "nothing said") {
                fate = wholes.Around(variant.place);
            }
            table[variant.field].push_back(std::move(fate));
        }
    }
    return table;
}

/// The fates of all fields that begin so, if they are the same.
std::optional<std::vector<std::string>> CommonFates(const Table& table, const std::string& begin) {
    auto field = table.lower_bound(begin);
    const std::vector<std::string> fates = field->second;
    for (; field != table.end() && field->first.starts_with(begin); ++field) {
        if (field->second != fates) {
            return std::nullopt;
        }
    }
    return fates;
}

/// The longest part of the field's name whose fields share their fates.
std::string GroupOf(const Table& table, const std::string& field) {
    for (std::size_t point = field.find('.'); point != field.npos;
         point = field.find('.', point + 1)) {
        if (CommonFates(table, field.substr(0, point + 1))) {
            return field.substr(0, point);
        }
    }
    return field;
}

/// A row for each field, and one for fields of a thing that share their fates.
std::string AsMarkdown(const Table& table) {
    std::string text = "| field |";
    std::string rule = "|---|";
    for (const InterchangeKindFacts& kind : orvo::InterchangeKinds()) {
        text += ' ' + std::string(kind.name) + " |";
        rule += "---|";
    }
    text += '\n' + rule + '\n';
    std::string last;
    for (const auto& [field, fates] : table) {
        const std::string group = GroupOf(table, field);
        if (group == last) {
            continue;
        }
        last = group;
        text += "| `" + group + "` |";
        for (const std::string& fate : fates) {
            text += ' ' + fate + " |";
        }
        text += '\n';
    }
    return text;
}

std::string KindsAsMarkdown() {
    std::string text = "| kind | what it is | written as | read |\n|---|---|---|---|\n";
    for (const InterchangeKindFacts& kind : orvo::InterchangeKinds()) {
        text += "| `" + std::string(kind.name) + "` | " + std::string(kind.title) + " | a " +
                (kind.writesFolder ? "folder" : "file") + " | " + (kind.canRead ? "yes" : "no") +
                " |\n";
    }
    return text;
}

/// Compares a table of the page on other programs, or renews it.
void ExpectOnPage(const std::string& name, const std::string& expected) {
    const std::filesystem::path page = test::SourceFolder() / "docs" / "interchange.md";
    const std::string begin = "<!-- begin of " + name + " -->\n";
    const std::string end = "<!-- end of " + name + " -->";
    std::string text = test::ReadFile(page);
    const std::size_t from = text.find(begin);
    const std::size_t to = text.find(end);
    ASSERT_NE(from, text.npos);
    ASSERT_NE(to, text.npos);
    const std::string shown = text.substr(from + begin.size(), to - from - begin.size());
    if (std::getenv("ORVO_UPDATE_DOCS") != nullptr) {
        text.replace(from + begin.size(), shown.size(), expected);
        std::ofstream(page) << text;
        return;
    }
    EXPECT_EQ(shown, expected) << "set ORVO_UPDATE_DOCS and run this test to renew it";
}

TEST(InterchangeFields, NothingIsLostSilently) {
    const Table table = FatesOfAllFields();
    EXPECT_GT(table.size(), 200u);
    for (const auto& [field, fates] : table) {
        for (std::size_t i = 0; i < fates.size(); ++i) {
            EXPECT_NE(fates[i], "nothing said")
                << field << " in " << orvo::InterchangeKinds()[i].name;
        }
    }
    ExpectOnPage("what the tests measured", AsMarkdown(table));
}

TEST(InterchangeFields, ThePageNamesAllKinds) {
    ExpectOnPage("the kinds", KindsAsMarkdown());
}

}  // namespace
