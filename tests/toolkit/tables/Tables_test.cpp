#include <orvo/Tables.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace {

using orvo::TableCell;
using orvo::TableKind;
using orvo::TableRow;
using testing::ElementsAre;

constexpr TableKind kKinds[] = {TableKind::Tracks,  TableKind::Clips, TableKind::Media,
                                TableKind::Effects, TableKind::Sends, TableKind::Automation};

orvo::Component ComponentWith(std::uint32_t index, float value, std::int64_t offset) {
    orvo::Component component;
    component.parameters[index] = {
        .value = value,
        .name = "Level",
        .automation = orvo::AutomationLane{.keyframes = {{.value = 0.1F, .sampleOffset = offset}}}};
    return component;
}

orvo::Session SessionWithEverything() {
    orvo::AudioTrack drums{.id = 1, .name = "Drums", .fader = ComponentWith(3, 0.5F, 48000)};
    drums.effectsRack.emplace().slots.push_back(
        orvo::EffectsSlot{.slotIndex = 2, .component = ComponentWith(0, 1, 24000)});
    drums.effectsRack->slots.back()->component->name = "Echo";
    drums.sendList.emplace().slots.push_back(orvo::SendSlot{
        .slotIndex = 4, .sendOutputId = 2, .sendComponent = ComponentWith(0, -6, 0)});
    drums.clips.push_back({.id = 7, .fileId = 5, .duration = 24000, .startPoint = 12000});
    drums.clips.back().gain = ComponentWith(0, 0, -5);
    orvo::Session session;
    session.audioTracks = {drums, {.id = 2, .kind = orvo::TrackKind::Bus, .name = "Room"}};
    session.files = {{.id = 5, .path = "/nowhere/a.wav"}};
    return session;
}

/// The cell of a row in the column of that name.
TableCell At(const TableRow& row, TableKind kind, std::string_view column) {
    const auto columns = orvo::ColumnsOf(kind);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name == column) {
            return row.at(i);
        }
    }
    ADD_FAILURE() << "no column " << column;
    return {};
}

TEST(Tables, EveryColumnHasANameOfItsOwnAndAMeaning) {
    for (const TableKind kind : kKinds) {
        std::set<std::string_view> names;
        for (const orvo::TableColumn& column : orvo::ColumnsOf(kind)) {
            EXPECT_TRUE(names.insert(column.name).second) << column.name;
            EXPECT_FALSE(column.meaning.empty()) << column.name;
        }
        for (const TableRow& row : orvo::MakeTable(SessionWithEverything(), kind)) {
            EXPECT_EQ(row.size(), names.size());
        }
        EXPECT_THAT(orvo::MakeTable(orvo::Session{}, kind), testing::IsEmpty());
    }
}

TEST(Tables, TracksHaveTheirCounts) {
    const orvo::Table table = orvo::MakeTable(SessionWithEverything(), TableKind::Tracks);
    ASSERT_EQ(table.size(), 2u);
    EXPECT_EQ(At(table[0], TableKind::Tracks, "name"), TableCell("Drums"));
    EXPECT_EQ(At(table[0], TableKind::Tracks, "keyframes"), TableCell(std::int64_t{4}));
    EXPECT_EQ(At(table[0], TableKind::Tracks, "muted"), TableCell(false));
    EXPECT_EQ(At(table[1], TableKind::Tracks, "kind"), TableCell("bus"));
}

TEST(Tables, ClipsHaveTheirTimesInSamplesAndSeconds) {
    orvo::Session session = SessionWithEverything();
    const TableRow row = orvo::MakeTable(session, TableKind::Clips).at(0);
    EXPECT_EQ(At(row, TableKind::Clips, "start"), TableCell(std::int64_t{12000}));
    EXPECT_EQ(At(row, TableKind::Clips, "startSeconds"), TableCell(0.25));
    EXPECT_EQ(At(row, TableKind::Clips, "media"), TableCell("/nowhere/a.wav"));
    EXPECT_EQ(At(row, TableKind::Clips, "notes"), TableCell("missing, automation"));
    session.sampleRate = 0;
    session.audioTracks[0].clips[0].fileId = 6;
    const TableRow without = orvo::MakeTable(session, TableKind::Clips).at(0);
    EXPECT_EQ(At(without, TableKind::Clips, "startSeconds"), TableCell());
    EXPECT_EQ(At(without, TableKind::Clips, "media"), TableCell());
}

TEST(Tables, MediaEffectsAndSendsHaveARowEach) {
    const orvo::Session session = SessionWithEverything();
    const TableRow media = orvo::MakeTable(session, TableKind::Media).at(0);
    EXPECT_EQ(At(media, TableKind::Media, "found"), TableCell(false));
    EXPECT_EQ(At(media, TableKind::Media, "clips"), TableCell(std::int64_t{1}));
    const TableRow effect = orvo::MakeTable(session, TableKind::Effects).at(0);
    EXPECT_EQ(At(effect, TableKind::Effects, "name"), TableCell("Echo"));
    EXPECT_EQ(At(effect, TableKind::Effects, "clipID"), TableCell());
    const TableRow send = orvo::MakeTable(session, TableKind::Sends).at(0);
    EXPECT_EQ(At(send, TableKind::Sends, "to"), TableCell("Room"));
    EXPECT_EQ(At(send, TableKind::Sends, "level"), TableCell(-6.0));
}

TEST(Tables, EveryKeyframeHasARow) {
    std::vector<TableCell> controls;
    for (const TableRow& row : orvo::MakeTable(SessionWithEverything(), TableKind::Automation)) {
        controls.push_back(At(row, TableKind::Automation, "control"));
        EXPECT_EQ(At(row, TableKind::Automation, "value"), TableCell(0.1));
    }
    EXPECT_THAT(controls, ElementsAre(TableCell("trackFader"), TableCell("sendComponent 4"),
                                      TableCell("slot 2"), TableCell("clipGain")));
}

TEST(Tables, TextsAreQuotedAndEscaped) {
    const TableRow row = {TableCell(), true,         std::int64_t{-3},   0.1,
                          "plain",     "a,\"b\"\nc", "tab\tback\\slash", "=1+1"};
    EXPECT_EQ(orvo::CsvLine(row),
              ",true,-3,0.1,plain,\"a,\"\"b\"\"\nc\",tab\tback\\slash,=1+1\r\n");
    EXPECT_EQ(orvo::TsvLine(row),
              "\ttrue\t-3\t0.1\tplain\ta,\"b\"\\nc\ttab\\tback\\\\slash\t=1+1\n");
}

}  // namespace
