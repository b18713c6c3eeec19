#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/Bases.h"
#include "platform/kelappsupport/Features.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/reference_host/recorder/HostStubs.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {
namespace {

using orvo::GlobalTrackInfo;
using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class GlobalTrackInfoElement : public test::ElementFixture {
protected:
    /// The calls from the info on. The session is object 1, the metronome 2 and the info 3.
    std::vector<std::string> CallsOfInfo(const std::string& element,
                                         const test::HostSetup& host = {}) {
        return CallsOf(CallsIn("<metronome>" + element + "</metronome>", host), "GlobalTrackInfo");
    }

    static Session With(const GlobalTrackInfo& info) {
        Session session;
        session.metronome.globalTrackInfo = info;
        return session;
    }
};

TEST_F(GlobalTrackInfoElement, VisibilitiesAndEventsReachTheMetronomesInfo) {
    EXPECT_THAT(
        CallsOfInfo("<globalTrackInfo tempoVisible='true' keySigVisible='false' "
                    "timeSigVisible='true'><keySignatureEvents>Ag==</keySignatureEvents>"
                    "<tempoEvents>AAEC</tempoEvents><timeSignatureEvents>AQ==</timeSignatureEvents>"
                    "</globalTrackInfo>"),
        ElementsAre(
            "IEditMetronomeInfoPrivate#2.GetGlobalTrackInfo() -> IEditGlobalTrackInfo#3",
            "IEditGlobalTrackInfo#3.SetTimeSigVisible(true)",
            "IEditGlobalTrackInfo#3.SetKeySigVisible(false)",
            "IEditGlobalTrackInfo#3.SetTempoVisible(true)",
            "IEditGlobalTrackInfo#3.SetKeySignatureEvents({\"bytes\":1,\"base64\":\"Ag==\"})",
            "IEditGlobalTrackInfo#3.SetTempoEvents({\"bytes\":3,\"base64\":\"AAEC\"})",
            "IEditGlobalTrackInfo#3.SetTimeSignatureEvents({\"bytes\":1,\"base64\":\"AQ==\"})"));
}

TEST_F(GlobalTrackInfoElement, WithoutAttributesNoVisibilityChanges) {
    EXPECT_THAT(
        CallsOfInfo("<globalTrackInfo/>"),
        ElementsAre("IEditMetronomeInfoPrivate#2.GetGlobalTrackInfo() -> IEditGlobalTrackInfo#3"));
}

TEST_F(GlobalTrackInfoElement, OnlyWhatIsStatedChanges) {
    EXPECT_THAT(CallsOf(CallsOfInfo("<globalTrackInfo keySigVisible='true'/>"), "Visible"),
                ElementsAre("IEditGlobalTrackInfo#3.SetKeySigVisible(true)"));
}

TEST_F(GlobalTrackInfoElement, AVisibilityIsOnOnlyForTheExactTextTrue) {
    for (const std::string text : {"1", "True", ""}) {
        EXPECT_THAT(CallsOf(CallsOfInfo("<globalTrackInfo tempoVisible='" + text + "'/>"),
                            "SetTempoVisible"),
                    ElementsAre("IEditGlobalTrackInfo#3.SetTempoVisible(false)"))
            << text;
    }
}

TEST_F(GlobalTrackInfoElement, EventsThatAreEmptyOrDoNotDecodeSetNothing) {
    EXPECT_THAT(
        CallsOf(CallsOfInfo("<globalTrackInfo><tempoEvents/><timeSignatureEvents> "
                            "</timeSignatureEvents><keySignatureEvents>*</keySignatureEvents>"
                            "</globalTrackInfo>"),
                "Events"),
        IsEmpty());
}

const std::string kInfo =
    "<globalTrackInfo tempoVisible='true'><tempoEvents>AAEC</tempoEvents>"
    "<timeSignatureEvents>AAEC</timeSignatureEvents><keySignatureEvents>AAEC</keySignatureEvents>"
    "</globalTrackInfo>";

TEST_F(GlobalTrackInfoElement, IsIgnoredWithItsEventsWhenTheHostHasNoMetronome) {
    EXPECT_THAT(CallsOfInfo(kInfo, Null("IEditSession.GetMetronomeInfo")), IsEmpty());
}

TEST_F(GlobalTrackInfoElement, IsIgnoredWithItsEventsWhenTheMetronomeHasNoInfo) {
    EXPECT_THAT(CallsOfInfo(kInfo, Null("IEditMetronomeInfoPrivate.GetGlobalTrackInfo")),
                ElementsAre("IEditMetronomeInfoPrivate#2.GetGlobalTrackInfo() -> null"));
}

TEST_F(GlobalTrackInfoElement, OfAMetronomeWithoutInfoDoesNotReachThatOfTheMetronomeBefore) {
    EXPECT_THAT(
        CallsOf(
            CallsIn("<metronome><globalTrackInfo/></metronome><metronome>" + kInfo + "</metronome>",
                    NullAtTheSecond("IEditMetronomeInfoPrivate.GetGlobalTrackInfo")),
            "GlobalTrackInfo"),
        ElementsAre("IEditMetronomeInfoPrivate#2.GetGlobalTrackInfo() -> IEditGlobalTrackInfo#3",
                    "IEditMetronomeInfoPrivate#2.GetGlobalTrackInfo() -> null"));
}

class CountingInfo final : public Counted<IEditGlobalTrackInfo> {
public:
    void SetTimeSigVisible(bool) override { ++calls; }
    void SetKeySigVisible(bool) override { ++calls; }
    void SetTempoVisible(bool) override { ++calls; }
    void SetTempoEvents(const kelcore::byte*, kelcore::uint32) override { ++calls; }
    void SetTimeSignatureEvents(const kelcore::byte*, kelcore::uint32) override { ++calls; }
    void SetKeySignatureEvents(const kelcore::byte*, kelcore::uint32) override { ++calls; }

    int calls = 0;
};

/// A session that returns one metronome after the other.
class MetronomesInTurn final : public EditSessionBase {
public:
    explicit MetronomesInTurn(std::vector<IEditMetronomeInfo*> metronomes)
        : metronomes_(std::move(metronomes)) {}
    IEditMetronomeInfo* GetMetronomeInfo() override { return metronomes_.at(asked_++); }

private:
    std::vector<IEditMetronomeInfo*> metronomes_;
    std::size_t asked_ = 0;
};

class MetronomeWithInfo final : public EditMetronomeInfoBase {
public:
    explicit MetronomeWithInfo(IEditGlobalTrackInfo& info) : info_(info) {}
    IEditGlobalTrackInfo* GetGlobalTrackInfo() override { return &info_; }

private:
    IEditGlobalTrackInfo& info_;
};

TEST_F(GlobalTrackInfoElement,
       OfAMetronomeWithoutAPrivateInterfaceReachesNoInfoNotEvenAnEarlierOne) {
    CountingInfo info;
    MetronomeWithInfo first(info);
    refhost::PublicOnly<IEditMetronomeInfo> second;
    MetronomesInTurn session({&first, &second, nullptr});
    folder.Write("session.orvo",
                 "<orvo><session><metronome><globalTrackInfo/></metronome>"
                 "<metronome>" +
                     kInfo + "</metronome><metronome>" + kInfo + "</metronome></session></orvo>");
    EXPECT_TRUE(serializer->Read(Path(), Retain<IEditSession>(&session)));
    EXPECT_EQ(info.calls, 0);
    for (const auto held : {info.ReferenceCount(), first.ReferenceCount(), second.ReferenceCount(),
                            session.ReferenceCount()}) {
        EXPECT_EQ(held, 1U);
    }
}

TEST_F(GlobalTrackInfoElement, WithoutInstrumentTracksItIsSkipped) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    serializer.emplace();
    EXPECT_EQ(CallsIn("<metronome>" + kInfo + "</metronome>"), CallsIn("<metronome/>"));
}

// Writing

TEST_F(GlobalTrackInfoElement, IsWrittenWithAllVisibilitiesAndItsBlocksInOneOrder) {
    EXPECT_EQ(WrittenElement("globalTrackInfo", With({true, false, true, {0, 1, 2}, {1}, {2}})),
              "<globalTrackInfo keySigVisible=\"false\" tempoVisible=\"true\" "
              "timeSigVisible=\"true\">\n"
              "  <tempoEvents><![CDATA[AAEC\n]]></tempoEvents>\n"
              "  <timeSignatureEvents><![CDATA[AQ==\n]]></timeSignatureEvents>\n"
              "  <keySignatureEvents><![CDATA[Ag==\n]]></keySignatureEvents>\n"
              "</globalTrackInfo>");
}

TEST_F(GlobalTrackInfoElement, WithoutEventsIsWrittenWithoutChildren) {
    EXPECT_EQ(WrittenElement("globalTrackInfo", With({})),
              "<globalTrackInfo keySigVisible=\"false\" tempoVisible=\"false\" "
              "timeSigVisible=\"false\"/>");
}

TEST_F(GlobalTrackInfoElement, IsNotWrittenWhenTheMetronomeHasNone) {
    EXPECT_THAT(*Write(Session{}).file, Not(HasSubstr("globalTrackInfo")));
}

TEST_F(GlobalTrackInfoElement, SurvivesAWriteAndARead) {
    for (const GlobalTrackInfo& info :
         {GlobalTrackInfo{}, GlobalTrackInfo{true, true, true, {0}, {255, 0}, {1, 2, 3, 4}}}) {
        EXPECT_EQ(ThroughFile(With(info)).metronome.globalTrackInfo, info);
    }
}

}  // namespace
}  // namespace tses
