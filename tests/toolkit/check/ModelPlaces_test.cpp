#include "toolkit/check/ModelPlaces.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "platform/kelcore/Strings.h"
#include "session/PluginTurn.h"
#include "tests/plugin/RandomSession.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using nlohmann::json;

/// The path of every value in a JSON document.
void AddLeaves(const json& value, const std::string& path,
               std::vector<std::pair<std::string, json>>& leaves) {
    if (!value.is_structured()) {
        leaves.emplace_back(path, value);
    }
    for (const auto& item : value.items()) {
        if (value.is_structured()) {
            AddLeaves(item.value(), path + "/" + item.key(), leaves);
        }
    }
}

class ModelPlacesTest : public testing::Test {
protected:
    /// The document of a session, and what a read gives of it.
    void Write(const orvo::Session& session) {
        const std::filesystem::path file = folder_ / "a.orvo";
        ASSERT_TRUE(orvo::WriteSession(session, file));
        const orvo::ReadResult read = orvo::ReadSession(file);
        ASSERT_TRUE(read);
        json_ = json::parse(orvo::ToJson(read.session, {.full = true}));
        Load(test::ReadFile(file));
    }

    void Load(std::string content) {
        const auto turn = orvo::WaitForTurn();
        const auto encoding = toolkit::DocumentEncoding::Of(content);
        document_.emplace(std::move(content), *encoding);
    }

    /// "audioClip@fileID", or "audioClip" for the element itself.
    std::string Find(const std::string& path) const {
        const toolkit::ModelPlaces::Spot spot = toolkit::ModelPlaces(*document_).Find(path);
        return kelcore::UTF16to8(document_->Name(spot.element)) +
               (spot.attribute.empty() ? "" : "@" + kelcore::UTF16to8(spot.attribute));
    }

    /// What the value of an attribute means to a read.
    std::string MeaningAt(const toolkit::ModelPlaces::Spot& spot) const {
        const tses::Attribute* const attribute =
            document_->Elements()[spot.element].kind->FindAttribute(spot.attribute);
        return kelcore::UTF16to8(
            attribute->meaningOf(*document_->Attribute(spot.element, spot.attribute)).value());
    }

    test::TemporaryFolder folder_;
    json json_;
    std::optional<toolkit::EditedDocument> document_;
};

TEST_F(ModelPlacesTest, APathLeadsToTheAttributeFromWhichTheValueWasRead) {
    Load(R"(<orvo><session sampleRate="8000"><tracks>
        <videoTrack id="1"/>
        <audioTrack id="1"/>
        <busTrack id="2"><trackAudioParameters><trackOutput outputID="3"/></trackAudioParameters>
          <sendList><sendSlot/><sendSlot slotIndex="4" sendOutputID="9"/></sendList></busTrack>
        <audioTrack id="1"><name/><clip fileID="5" sourceOutPoint="8"/><audioClip fileID="6"/>
          <audioClip/></audioTrack>
        </tracks><clipGroups><clipGroup><name/><item clipID="7"/></clipGroup></clipGroups></session>
        <files><file/><file id="8" relativePath="a.wav"/></files></orvo>)");
    EXPECT_EQ(Find("/sampleRate"), "session@sampleRate");
    EXPECT_EQ(Find("/audioTracks/1/outputTrackID"), "trackOutput@outputID");
    EXPECT_EQ(Find("/audioTracks/1/sendList/sendSlots/0/sendOutputID"), "sendSlot@sendOutputID");
    EXPECT_EQ(Find("/audioTracks/0/audioClips/0/duration"), "clip@sourceOutPoint");
    EXPECT_EQ(Find("/audioTracks/0/audioClips/1/fileID"), "audioClip@fileID");
    EXPECT_EQ(Find("/audioTracks/0/audioClips/2/fileID"), "audioClip");
    EXPECT_EQ(Find("/clipGroups/0/items/0/clipID"), "item@clipID");
    EXPECT_EQ(Find("/files/0/path"), "file@relativePath");
    EXPECT_EQ(Find("/files/1/path"), "orvo");
    EXPECT_EQ(Find("/clipGroups/0/items/5/clipID"), "clipGroup");
}

RC_GTEST_FIXTURE_PROP(ModelPlacesTest, AnyValueOfAReadSessionIsThatOfItsAttribute, ()) {
    Write(test::DrawSession());
    RC_ASSERT(!HasFatalFailure());
    const toolkit::ModelPlaces places(*document_);
    std::vector<std::pair<std::string, json>> leaves;
    AddLeaves(json_, "", leaves);
    std::size_t compared = 0;
    for (const auto& [path, value] : leaves) {
        const toolkit::ModelPlaces::Spot spot = places.Find(path);
        const std::string key = path.substr(path.rfind('/') + 1);
        const bool isJoint = key == "timeFormat";  // several attributes together say it
        if (kelcore::UTF16to8(spot.attribute) == key && !isJoint &&
            (value.is_string() || value.is_boolean())) {
            RC_LOG() << path << '\n';
            RC_ASSERT(MeaningAt(spot) ==
                      (value.is_string() ? value.get<std::string>() : value.dump()));
            ++compared;
        }
    }
    RC_CLASSIFY(compared > 20);
}

}  // namespace
