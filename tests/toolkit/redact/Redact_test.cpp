#include <orvo/Redact.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>

#include <orvo/Session.h>
#include "tests/plugin/RandomSession.h"
#include "tests/support/TemporaryFolder.h"
#include "toolkit/redact/Pseudonyms.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using toolkit::Pseudonyms;

class RedactTest : public testing::Test {
protected:
    std::string Redact(const std::string& content, const orvo::RedactOptions& options = {}) {
        std::ofstream(folder_ / "a.orvo", std::ios::binary) << content;
        orvo::Redactor redactor(options);
        const orvo::RedactResult result = redactor.Redact(folder_ / "a.orvo", folder_ / "b.orvo");
        EXPECT_TRUE(result) << (result.messages.empty() ? "" : result.messages[0].what);
        EXPECT_TRUE(orvo::ReadSession(folder_ / "b.orvo"));
        return test::ReadFile(folder_ / "b.orvo");
    }

    test::TemporaryFolder folder_;
};

/// "Secret" stands wherever a text can stand.
constexpr const char* kSecrets = R"(<?xml version="1.0"?><!-- Secret -->
<?note Secret?><orvo version="1.5" xmlns:s="urn:Secret"><session appVersion="5.0" mood="Secret"
 sampleRate="Secret" s:bitDepth="Secret" bitDepth="16">Secret<!--Secret--><name>Secret</name>
<tracks><audioTrack id="1" preRenderedFile="/Secret/Secret.wav"><trackParameters>
<name>Secret <![CDATA[Secret]]> &#83;ecret</name></trackParameters>
<audioClip name="Secret" fileID="1"><properties properties="{'Secret': 1}"/></audioClip>
<audioClip name="S&#x65;cret"/><effectsRack><slot slotIndex="0"><component name="Reverb"
 presetName="Secret"><presetChunkData>U2VjcmV0</presetChunkData><parameter index="0" name="Size"
 parameterValue="0.25"/></component></slot></effectsRack></audioTrack>
<instrumentTrack id="2" midiIn="Secret"><midiClip name="Secret"><midiEvents>U2Vj cmV0
</midiEvents></midiClip></instrumentTrack></tracks>
<xmpMetadata><![CDATA[<x>Secret</x>]]></xmpMetadata>
<unknown a="Secret"><deep>Secret<![CDATA[Secret]]></deep></unknown>
<clipGroups><clipGroup><name>Secret</name></clipGroup></clipGroups>
<properties><property key="Secret">Secret</property></properties>
<trackVisibilityPresets><trackVisibilityPreset name="Secret"/></trackVisibilityPresets></session>
<files><file id="1" absolutePath="D:\Secret\Secret.wav" relativePath="../Secret/Secret.wav"
 mediaHandler="Secret" recoveryID="Secret" importerPrivateSettings="Secret"/></files>
<audioDevice inputID="Secret" outputID="Secret"><inputPort id="1" name="Secret"/></audioDevice>
</orvo><!-- Secret -->
)";

TEST_F(RedactTest, NoTextOfTheUserIsLeft) {
    std::string redacted = Redact(kSecrets);
    EXPECT_THAT(redacted, Not(HasSubstr("ecret")));
    EXPECT_THAT(redacted, Not(HasSubstr("U2Vj")));
    EXPECT_THAT(redacted, HasSubstr("<presetChunkData>AAAAAAAA</presetChunkData>"));
}

TEST_F(RedactTest, WhatSaysNothingOfTheUserStays) {
    const std::string redacted = Redact(kSecrets);
    for (const char* const kept :
         {"appVersion=\"5.0\"", "name=\"Reverb\"", "name=\"Size\"", "parameterValue=\"0.25\"",
          "<!-- xxxxxx -->\n<?note xxxxxx?>", "mood=\"xxxxxx\"\n", "bitDepth=\"16\""}) {
        EXPECT_THAT(redacted, HasSubstr(kept));
    }
}

TEST_F(RedactTest, OneTextBecomesOneOther) {
    const std::string redacted = Redact(kSecrets);
    EXPECT_THAT(redacted, HasSubstr("absolutePath=\"D:\\name1\\name1.wav\""));
    EXPECT_THAT(redacted, HasSubstr("relativePath=\"../name1/name1.wav\""));
    EXPECT_THAT(redacted, HasSubstr("<audioClip name=\"Clip 1\" fileID=\"1\""));
    EXPECT_THAT(redacted, HasSubstr("<audioClip name=\"Clip 1\"/>"));
    EXPECT_THAT(redacted, HasSubstr("midiClip name=\"Clip 1\""));
    EXPECT_THAT(redacted, HasSubstr("<name>Track 1<![CDATA[]]></name>"));
}

TEST_F(RedactTest, WhatIsToBeKeptStays) {
    EXPECT_EQ(Redact(kSecrets, {.keepNames = true,
                                .keepPaths = true,
                                .keepTexts = true,
                                .keepStates = true,
                                .keepUnknown = true}),
              kSecrets);
    EXPECT_THAT(Redact(kSecrets, {.keepNames = true}),
                HasSubstr("<audioClip name=\"S&#x65;cret\"/>"));
    EXPECT_THAT(Redact(kSecrets, {.keepPaths = true}), HasSubstr("\"D:\\Secret\\Secret.wav\""));
    EXPECT_THAT(Redact(kSecrets, {.keepStates = true}), HasSubstr("U2VjcmV0"));
    EXPECT_THAT(Redact(kSecrets, {.keepTexts = true}), HasSubstr("recoveryID=\"Secret\""));
    EXPECT_THAT(Redact(kSecrets, {.keepUnknown = true}),
                HasSubstr("<deep>Secret<![CDATA[Secret]]>"));
}

TEST_F(RedactTest, AFileMayBeItsOwnTarget) {
    std::ofstream(folder_ / "a.orvo") << "<orvo><!-- Secret --></orvo>";
    EXPECT_EQ(orvo::Redactor().Redact(folder_ / "a.orvo", folder_ / "a.orvo").changes, 1u);
    EXPECT_EQ(test::ReadFile(folder_ / "a.orvo"), "<orvo><!-- xxxxxx --></orvo>");
}

TEST_F(RedactTest, WhatCannotBeReadIsRefused) {
    const orvo::RedactResult result =
        orvo::Redactor().Redact(folder_ / "gone.orvo", folder_ / "b.orvo");
    EXPECT_FALSE(result);
    EXPECT_FALSE(result.messages.empty());
}

TEST_F(RedactTest, SeveralFilesShareTheirPseudonyms) {
    std::ofstream(folder_ / "a.orvo") << "<orvo><audioDevice inputID='One' outputID='Two'/></orvo>";
    std::ofstream(folder_ / "b.orvo")
        << "<orvo><audioDevice inputID='Two' outputID='Three'/></orvo>";
    orvo::Redactor redactor;
    ASSERT_TRUE(redactor.Redact(folder_ / "a.orvo", folder_ / "a.orvo"));
    ASSERT_TRUE(redactor.Redact(folder_ / "b.orvo", folder_ / "b.orvo"));
    EXPECT_EQ(test::ReadFile(folder_ / "b.orvo"),
              "<orvo><audioDevice inputID='Device 2' outputID='Device 3'/></orvo>");
    EXPECT_EQ(redactor.Key().at("Device 3"), "Three");
}

RC_GTEST_FIXTURE_PROP(RedactTest, AReadDiffersInTextsOnly, ()) {
    orvo::Session session = test::DrawSession();
    RC_ASSERT(bool(orvo::WriteSession(session, folder_ / "a.orvo")));
    const orvo::Session before = orvo::ReadSession(folder_ / "a.orvo").session;
    RC_ASSERT(bool(orvo::Redactor().Redact(folder_ / "a.orvo", folder_ / "b.orvo")));
    orvo::ReadResult after = orvo::ReadSession(folder_ / "b.orvo");
    RC_ASSERT(bool(after));
    RC_ASSERT(after.session.audioTracks.size() == before.audioTracks.size());
    RC_ASSERT(after.session.properties.size() == before.properties.size());
    for (std::size_t i = 0; i < before.audioTracks.size(); ++i) {
        orvo::AudioTrack& track = after.session.audioTracks[i];
        RC_ASSERT(track.name.empty() == before.audioTracks[i].name.empty());
        RC_ASSERT(track.clips.size() == before.audioTracks[i].clips.size());
        for (std::size_t k = 0; k < track.clips.size(); ++k) {
            const orvo::AudioClip& clip = before.audioTracks[i].clips[k];
            RC_ASSERT(track.clips[k].fileId == clip.fileId);
            RC_ASSERT(track.clips[k].fadeIn == clip.fadeIn);
            RC_ASSERT(track.clips[k].channelSources == clip.channelSources);
            RC_ASSERT(track.clips[k].gain == clip.gain || clip.gain->presetName != "");
        }
    }
    RC_ASSERT(after.session.timeFormat == before.timeFormat);
    RC_ASSERT(after.session.viewState == before.viewState);
}

TEST(Pseudonyms, PathsOfEverySystemKeepTheirShape) {
    Pseudonyms pseudonyms;
    EXPECT_EQ(pseudonyms.OfPath(u"/Volumes/My Disk/take.1.wav"), u"/name1/name2/name3.wav");
    EXPECT_EQ(pseudonyms.OfPath(u"D:\\My Disk\\take.1.aiff"), u"D:\\name2\\name3.aiff");
    EXPECT_EQ(pseudonyms.OfPath(u"..\\.\\take.1"), u"..\\.\\name4.1");
    EXPECT_EQ(pseudonyms.OfPath(u"a.long extension/.hidden"), u"name5/name6");
    EXPECT_EQ(pseudonyms.OfPath(u"song.for anna"), u"name7");
    EXPECT_EQ(pseudonyms.OfPath(u"//server/"), u"//name8/");
    EXPECT_EQ(pseudonyms.OfPath(u""), u"");
}

TEST(Pseudonyms, ANameKeepsTheSpaceAroundIt) {
    Pseudonyms pseudonyms;
    EXPECT_EQ(pseudonyms.OfName("Track", u" \nDrums\t"), u" \nTrack 1\t");
    EXPECT_EQ(pseudonyms.OfName("Track", u"Drums"), u"Track 1");
    EXPECT_EQ(pseudonyms.OfName("Clip", u"Drums"), u"Clip 1");
    EXPECT_EQ(pseudonyms.OfName("Track", u" "), u" ");
}

TEST(Pseudonyms, MaskingKeepsPunctuationOnly) {
    EXPECT_EQ(toolkit::Masked(u"{\"a1\": \u00E9\U0001F600}"), u"{\"xx\": xxx}");
    EXPECT_EQ(toolkit::Zeroed(u"aB+/\n0w=="), u"AAAA\nAA==");
}

}  // namespace
