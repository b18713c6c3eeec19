#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/elements/effects/Writers.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/support/DocumentUnderTest.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PresetChunkData : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfChunk(const std::string& content) {
        return CallsOf(CallsInTrack("<effectsRack><slot><component><presetChunkData>" + content +
                                    "</presetChunkData></component></slot></effectsRack>"),
                       "SetPresetChunk");
    }

    static AudioTrack WithChunk(std::vector<kelcore::byte> chunk) {
        AudioTrack track;
        track.effectsRack.emplace().slots.emplace_back().emplace().component.emplace().presetChunk =
            std::move(chunk);
        return track;
    }
};

// Reading

TEST_F(PresetChunkData, IsDecodedAtItsEnd) {
    EXPECT_THAT(CallsOfChunk("<![CDATA[AAEC]]>"), ElementsAre(HasSubstr("AAEC")));
    EXPECT_THAT(CallsOfChunk("AAEC"), ElementsAre(HasSubstr("AAEC")));
}

TEST_F(PresetChunkData, WhiteSpaceAroundIsTrimmed) {
    EXPECT_EQ(CallsOfChunk("\n  AAEC\n"), CallsOfChunk("AAEC"));
}

TEST_F(PresetChunkData, AnEmptyOneLeavesThePreset) {
    EXPECT_THAT(CallsOfChunk(""), IsEmpty());
    EXPECT_THAT(CallsOfChunk("  \n"), IsEmpty());
    EXPECT_THAT(CallsOfChunk("<![CDATA[]]>"), IsEmpty());
}

TEST_F(PresetChunkData, OneThatDoesNotDecodeLeavesThePreset) {
    for (const std::string text : {"?", "AAE", "AAEC!", "=", "\xC3\xA4\xC3\xA4"}) {
        EXPECT_THAT(CallsOfChunk(text), IsEmpty()) << text;
    }
}

TEST_F(PresetChunkData, WithoutAComponentIsDropped) {
    EXPECT_THAT(CallsInTrack("<effectsRack><slot><component><presetChunkData>AAEC"
                             "</presetChunkData></component></slot></effectsRack>",
                             Null("IEditEffectsSlot.GetComponent"))
                    .back(),
                "IEditEffectsSlot#4.GetComponent() -> null");
}

TEST_F(PresetChunkData, OfAComponentWithAKeywordIsNotRecognised) {
    EXPECT_THAT(CallsOf(CallsInTrack("<effectsRack><component id='rackMix'><presetChunkData>AAEC"
                                     "</presetChunkData></component></effectsRack>"),
                        "SetPresetChunk"),
                IsEmpty());
}

// Writing

TEST_F(PresetChunkData, IsWrittenAsACDataSection) {
    EXPECT_EQ(WrittenElement("presetChunkData",
                             WithChunk({kelcore::byte(0), kelcore::byte(1), kelcore::byte(2)})),
              "<presetChunkData><![CDATA[AAEC\n]]></presetChunkData>");
}

TEST_F(PresetChunkData, OfSizeZeroIsNotWritten) {
    EXPECT_EQ(WrittenElement("presetChunkData", WithChunk({})), "");
}

/// A component that announces a state but does not hand it over.
class WithholdingComponent final : public IQueryComponent {
public:
    virtual ~WithholdingComponent() = default;
    void AddReference() override {}
    void Release() override {}
    IHostString* GetComponentID() override { return nullptr; }
    IHostString* GetName() override { return nullptr; }
    kelcore::uint32 GetParameterCount() override { return 0; }
    bool GetParameterValue(kelcore::uint32, float&) override { return false; }
    IHostString* GetParameterName(kelcore::uint32) override { return nullptr; }
    IQueryAutomationLane* GetParameterAutomation(kelcore::uint32) override { return nullptr; }
    kelcore::uint32 GetPresetChunkSize() override { return 3; }
    bool GetPresetChunk(kelcore::byte*) override { return false; }
    bool IsEditorVisible() override { return false; }
    void GetEditorRect(kelcore::int32&, kelcore::int32&, kelcore::int32&,
                       kelcore::int32&) override {}
    bool IsPowered() override { return true; }
    bool IsParameterSafeDuringWrite(kelcore::uint32) override { return false; }
    IHostString* GetComponentGuid() override { return nullptr; }
    IQueryComponentPreset* GetPreset() override { return nullptr; }
};

TEST_F(PresetChunkData, ThatTheHostDoesNotHandOverIsNotWrittenAndThatIsSuccess) {
    WithholdingComponent component;
    SessionXMLWriter writer(Path(), {}, test::DocumentUnderTest());
    EXPECT_TRUE(WritePresetChunkData(writer, component));
    ASSERT_TRUE(writer.Save());
    EXPECT_EQ(test::ElementOf(test::ReadFile(folder / "session.orvo"), "presetChunkData"), "");
}

TEST_F(PresetChunkData, SurvivesAWriteAndARead) {
    std::vector<kelcore::byte> chunk;
    for (int i = 0; i < 1000; ++i) {
        chunk.push_back(static_cast<kelcore::byte>(i * 7));
    }
    for (std::size_t size : {1u, 2u, 3u, 76u, 1000u}) {
        const AudioTrack track = WithChunk({chunk.begin(), chunk.begin() + static_cast<int>(size)});
        EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).effectsRack, track.effectsRack);
    }
}

}  // namespace
}  // namespace tses
