#include "reference_host/recorder/Recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/Bases.h"
#include "host/Text.h"
#include "reference_host/SessionNode.h"
#include "reference_host/recorder/CallJson.h"
#include "tests/reference_host/recorder/HostStubs.h"

namespace refhost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Host {
    struct Session final : tses::EditSessionBase {
        tses::IHostLogTarget* GetLogTarget() override { return &host->logTarget; }
        tses::IEditFile* GetFile(kelcore::uint32 id) override { return &host->files.at(id); }
        tses::IEditAudioTrack* GetAudioTrack(kelcore::uint32 id) override {
            return id == 0 ? static_cast<tses::IEditAudioTrack*>(&host->track) : &host->plainTrack;
        }
        tses::IEditMetronomeInfo* GetMetronomeInfo() override { return host->metronome; }
        void SetSampleRate(kelcore::uint32 rate) override { sampleRate = rate; }
        void SetDuration(kelcore::int64) override { throw std::runtime_error("no duration"); }

        kelcore::uint32 sampleRate = 0;
        Host* host = nullptr;
    };
    struct Metronome final : tses::EditMetronomeInfoBase {
        tses::IEditAudioTrack* GetTrack() override { return track; }
        tses::IEditAudioTrack* track = nullptr;
    };
    struct Track final : tses::EditAudioTrackBase {
        tses::IEditComponent* GetFaderComponent(const kelcore::char16*) override {
            return &component;
        }
        tses::EditComponentBase component;
    };

    Host() {
        session.host = this;
        privateMetronome.track = &track;
    }

    Session session;
    tses::HostLogTargetBase logTarget;
    std::array<tses::EditFileBase, 2> files;
    Track track;
    PublicOnly<tses::IEditAudioTrack> plainTrack;
    Metronome privateMetronome;
    PublicOnly<tses::IEditMetronomeInfo> plainMetronome;
    tses::IEditMetronomeInfo* metronome = &privateMetronome;
};

class RecorderOfARead : public testing::Test {
protected:
    void SetUp() override { Start({}, false); }

    void Start(Interceptor interceptor, bool recordReferences) {
        lines.clear();
        recorder = std::make_unique<Recorder>(Recorder::Options{
            .sink = [this](const CallRecord& call) { lines.push_back(FormatCallAsJson(call)); },
            .interceptor = std::move(interceptor),
            .recordReferences = recordReferences});
        session = &recorder->Wrap(host.session);
    }

    Host host;
    std::vector<std::string> lines;
    std::unique_ptr<Recorder> recorder;
    tses::IEditSession* session = nullptr;
};

TEST_F(RecorderOfARead, ACallReachesTheHostAndIsReported) {
    session->SetSampleRate(44100);
    EXPECT_EQ(host.session.sampleRate, 44100U);
    EXPECT_THAT(
        lines,
        ElementsAre(
            R"({"seq": 1, "object": "IEditSession#1", "call": "SetSampleRate", "args": [44100]})"));
}

TEST_F(RecorderOfARead, ATextThatIsNullIsReportedAsNull) {
    session->SetInputDeviceId(nullptr);
    EXPECT_THAT(
        lines,
        ElementsAre(
            R"({"seq": 1, "object": "IEditSession#1", "call": "SetInputDeviceId", "args": [null]})"));
}

TEST_F(RecorderOfARead, ObjectsAreNumberedInOrderOfFirstAppearance) {
    tses::IEditFile* second = session->GetFile(1);
    tses::IEditFile* first = session->GetFile(0);
    second->SetPath(u"b.wav");
    first->SetPath(u"a.wav");
    EXPECT_THAT(
        lines,
        ElementsAre(
            R"({"seq": 1, "object": "IEditSession#1", "call": "GetFile", "args": [1], "returns": "IEditFile#2"})",
            R"({"seq": 2, "object": "IEditSession#1", "call": "GetFile", "args": [0], "returns": "IEditFile#3"})",
            R"({"seq": 3, "object": "IEditFile#2", "call": "SetPath", "args": ["b.wav"]})",
            R"({"seq": 4, "object": "IEditFile#3", "call": "SetPath", "args": ["a.wav"]})"));
}

TEST_F(RecorderOfARead, TheSameObjectKeepsItsNumberAndItsStandIn) {
    EXPECT_EQ(session->GetFile(1), session->GetFile(1));
    EXPECT_THAT(lines[1], testing::HasSubstr(R"("returns": "IEditFile#2")"));
}

TEST_F(RecorderOfARead, AnObjectReachedInTwoWaysIsOneObject) {
    tses::IEditAudioTrack* track = session->GetAudioTrack(0);
    EXPECT_EQ(session->GetMetronomeInfo()->GetTrack(), track);
    EXPECT_THAT(lines.back(), testing::HasSubstr(R"("returns": "IEditAudioTrack#2")"));
}

TEST_F(RecorderOfARead, ATrackHasOneNumberThroughBothItsInterfaces) {
    auto* track = dynamic_cast<tses::IEditAudioTrackPrivate*>(session->GetAudioTrack(0));
    ASSERT_NE(track, nullptr);
    lines.clear();
    track->SetIndex(5);
    track->CreateAudioClip(7);
    EXPECT_THAT(
        lines,
        ElementsAre(
            R"({"seq": 2, "object": "IEditAudioTrackPrivate#2", "call": "SetIndex", "args": [5]})",
            R"({"seq": 3, "object": "IEditAudioTrack#2", "call": "CreateAudioClip", "args": [7], "returns": null})"));
}

TEST_F(RecorderOfARead, ATrackWithoutItsPrivateInterfaceDoesNotCastBehindARecorderEither) {
    tses::IEditAudioTrack* track = session->GetAudioTrack(1);
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(dynamic_cast<tses::IEditAudioTrackPrivate*>(track), nullptr);
}

TEST_F(RecorderOfARead, AMetronomeCastsAsTheHostsOwnDoes) {
    EXPECT_NE(dynamic_cast<tses::IEditMetronomeInfoPrivate*>(session->GetMetronomeInfo()), nullptr);
    host.metronome = &host.plainMetronome;
    EXPECT_EQ(dynamic_cast<tses::IEditMetronomeInfoPrivate*>(session->GetMetronomeInfo()), nullptr);
}

TEST_F(RecorderOfARead, AMetronomeHasOneNumberThroughBothItsInterfaces) {
    auto* metronome = dynamic_cast<tses::IEditMetronomeInfoPrivate*>(session->GetMetronomeInfo());
    ASSERT_NE(metronome, nullptr);
    lines.clear();
    metronome->SetEnabled(true);
    metronome->GetGlobalTrackInfo();
    EXPECT_THAT(
        lines,
        ElementsAre(
            R"({"seq": 2, "object": "IEditMetronomeInfo#2", "call": "SetEnabled", "args": [true]})",
            R"({"seq": 3, "object": "IEditMetronomeInfoPrivate#2", "call": "GetGlobalTrackInfo", "args": [], "returns": null})"));
}

TEST_F(RecorderOfARead, APointerWithItsCountIsOneArgument) {
    const std::array<kelcore::uint32, 3> beats{1, 2, 2};
    session->GetMetronomeInfo()->SetPattern(beats.data(), 3);
    EXPECT_EQ(
        lines.back(),
        R"({"seq": 2, "object": "IEditMetronomeInfo#2", "call": "SetPattern", "args": [[1, 2, 2]]})");

    auto* track = dynamic_cast<tses::IEditAudioTrackPrivate*>(session->GetAudioTrack(0));
    ASSERT_NE(track, nullptr);
    const std::array<kelcore::byte, 3> bytes{0, 1, 2};
    track->GetFaderComponent(u"trackFader")->SetPresetChunk(bytes.data(), 3);
    EXPECT_THAT(lines.back(), testing::HasSubstr(R"("args": [{"bytes": 3, "base64": "AAEC"}])"));
}

TEST_F(RecorderOfARead, AHostStringIsShownAsItsText) {
    tses::HostText message(u"XML ERROR");
    session->GetLogTarget()->LogMessage(&message);
    EXPECT_EQ(
        lines.back(),
        R"({"seq": 2, "object": "IHostLogTarget#2", "call": "LogMessage", "args": ["XML ERROR"]})");
}

TEST_F(RecorderOfARead, CountingReachesTheHostAndIsNotReported) {
    tses::IEditFile* file = session->GetFile(0);
    const auto held = host.files[0].ReferenceCount();
    lines.clear();
    file->AddReference();
    EXPECT_EQ(host.files[0].ReferenceCount(), held + 1);
    file->Release();
    EXPECT_EQ(host.files[0].ReferenceCount(), held);
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(RecorderOfARead, CountingIsReportedOnRequest) {
    Start({}, true);
    session->AddReference();
    session->Release();
    EXPECT_THAT(
        lines,
        ElementsAre(R"({"seq": 1, "object": "IEditSession#1", "call": "AddReference", "args": []})",
                    R"({"seq": 2, "object": "IEditSession#1", "call": "Release", "args": []})"));
}

TEST_F(RecorderOfARead, ObjectsAreHeldUntilTheRecorderEnds) {
    session->GetFile(0);
    session->GetFile(0);
    EXPECT_EQ(host.files[0].ReferenceCount(), 2U);
    EXPECT_EQ(host.session.ReferenceCount(), 2U);
    recorder.reset();
    EXPECT_EQ(host.files[0].ReferenceCount(), 1U);
    EXPECT_EQ(host.session.ReferenceCount(), 1U);
}

TEST_F(RecorderOfARead, ACallInWhichTheHostThrowsIsReportedAndThrows) {
    EXPECT_THROW(session->SetDuration(9), std::runtime_error);
    EXPECT_THAT(
        lines,
        ElementsAre(
            R"({"seq": 1, "object": "IEditSession#1", "call": "SetDuration", "args": [9]})"));
}

TEST_F(RecorderOfARead, ANullFaultKeepsTheCallFromTheHost) {
    FaultPlan plan;
    plan.ReturnNull("IEditSession.GetFile");
    Start(plan, false);
    EXPECT_EQ(session->GetFile(77), nullptr);  // the host would throw
    EXPECT_NE(session->GetAudioTrack(0), nullptr);
    EXPECT_EQ(
        lines.front(),
        R"({"seq": 1, "object": "IEditSession#1", "call": "GetFile", "args": [77], "returns": null})");
}

TEST_F(RecorderOfARead, AThrownFaultKeepsTheCallFromTheHostAndIsReported) {
    FaultPlan plan;
    plan.Throw("IEditSession.SetSampleRate", std::make_exception_ptr(std::out_of_range("fault")));
    Start(plan, false);
    EXPECT_THROW(session->SetSampleRate(1), std::out_of_range);
    EXPECT_EQ(host.session.sampleRate, 0U);
    EXPECT_EQ(lines.size(), 1U);
}

TEST_F(RecorderOfARead, AnInterceptorSeesTheCallBeforeItIsMade) {
    std::vector<std::string> seen;
    Start(
        [&](const CallRecord& call) {
            EXPECT_EQ(host.session.sampleRate, 0U);
            seen.push_back(FormatCallAsJson(call));
            return CallDecision::Forward();
        },
        false);
    session->SetSampleRate(8000);
    EXPECT_EQ(host.session.sampleRate, 8000U);
    EXPECT_EQ(seen, lines);
}

TEST_F(RecorderOfARead, ANullFaultOnAnOperationThatReturnsNoObjectIsForwarded) {
    Start([](const CallRecord&) { return CallDecision::ReturnNull(); }, false);
    session->SetSampleRate(8000);
    EXPECT_EQ(host.session.sampleRate, 8000U);
}

TEST_F(RecorderOfARead, ANumberForACallWithoutAResultKeepsTheCallFromTheHost) {
    Start([](const CallRecord&) { return CallDecision::ReturnNumber(7); }, false);
    session->SetSampleRate(8000);
    EXPECT_EQ(host.session.sampleRate, 0U);
    EXPECT_NE(session->GetFile(1), nullptr) << "a number cannot replace an object";
    EXPECT_EQ(lines.size(), 2U);
}

TEST(Recorder, WorksWithoutASink) {
    Host host;
    Recorder recorder({});
    recorder.Wrap(host.session).SetSampleRate(8000);
    EXPECT_EQ(host.session.sampleRate, 8000U);
}

// A write -----------------------------------------------------------------------------------------

struct Context final : tses::Counted<tses::IHostObject> {};

struct WriteHost final : tses::QuerySessionBase {
    tses::IHostObject* GetContext() override { return &context; }
    void GetFormatVersion(kelcore::int32* major, kelcore::int32* minor) override {
        *major = 1;
        *minor = 5;
    }
    kelcore::int32 GetChannelCount() override { return -2; }
    tses::IHostString* GetXmpMetadata() override { return &xmp; }
    void GetPanMode(bool& logarithmic, double& panPower) override {
        logarithmic = true;
        panPower = -4.5;
    }

    Context context;
    tses::HostText xmp{u"<x/>"};
};

class RecorderOfAWrite : public testing::Test {
protected:
    WriteHost host;
    std::vector<CallRecord> calls;
    Recorder recorder{{.sink = [this](const CallRecord& call) { calls.push_back(call); },
                       .interceptor = {},
                       .recordReferences = false}};
    tses::IQuerySession& session = recorder.Wrap(host);
};

TEST_F(RecorderOfAWrite, AResultThatIsNotAnObjectIsReportedAsItsValue) {
    EXPECT_EQ(session.GetChannelCount(), -2);
    EXPECT_EQ(calls.at(0).value, TraceValue(std::int64_t{-2}));
    EXPECT_FALSE(calls.at(0).returned.has_value());
}

TEST_F(RecorderOfAWrite, AHostStringIsReturnedAsItIsAndReportedAsItsText) {
    EXPECT_EQ(session.GetXmpMetadata(), &host.xmp);
    EXPECT_EQ(calls.at(0).value, TraceValue(std::u16string(u"<x/>")));
    EXPECT_EQ(session.GetInputDeviceId(), nullptr);
    EXPECT_EQ(calls.at(1).value, TraceValue());
}

TEST_F(RecorderOfAWrite, OutputsAreReportedSeparatelyFromArguments) {
    bool logarithmic = false;
    double panPower = 0;
    session.GetPanMode(logarithmic, panPower);
    EXPECT_TRUE(logarithmic);
    EXPECT_THAT(calls.at(0).arguments, IsEmpty());
    EXPECT_THAT(calls.at(0).outputs, ElementsAre(TraceValue(true), TraceValue(-4.5)));

    kelcore::int32 major = 0;
    kelcore::int32 minor = 0;
    session.GetFormatVersion(&major, &minor);
    EXPECT_EQ(minor, 5);
    EXPECT_THAT(calls.at(1).outputs,
                ElementsAre(TraceValue(std::int64_t{1}), TraceValue(std::int64_t{5})));
}

TEST(RecorderOfAWriteWithFaults, OutputsOfACallThatDoesNotReachTheHostKeepTheirValues) {
    WriteHost host;
    std::vector<CallRecord> calls;
    Recorder recorder{
        {.sink = [&](const CallRecord& call) { calls.push_back(call); },
         .interceptor = [](const CallRecord&) { return CallDecision::ReturnNumber(7); },
         .recordReferences = false}};
    bool logarithmic = false;
    double panPower = 2.5;
    recorder.Wrap(host).GetPanMode(logarithmic, panPower);
    EXPECT_FALSE(logarithmic);
    EXPECT_THAT(calls.at(0).outputs, ElementsAre(TraceValue(false), TraceValue(2.5)));
}

TEST_F(RecorderOfAWrite, TheContextIsReturnedAsItIsAndNotHeld) {
    EXPECT_EQ(session.GetContext(), &host.context);
    EXPECT_EQ(host.context.ReferenceCount(), 1U);
    EXPECT_EQ(calls.at(0).returned, (ObjectResult{"IHostObject", 2}));
}

TEST(Recorder, ABufferIsShownFilledWhileTheCallIsReported) {
    const auto node = SessionNode::Make(
        {.metronome = {.globalTrackInfo = orvo::GlobalTrackInfo{.tempoEvents = {7, 8}}}});
    std::vector<int> shown;
    Recorder recorder({.sink =
                           [&](const CallRecord& call) {
                               shown.push_back(call.buffer != nullptr ? call.buffer[1] : -1);
                           },
                       .interceptor = {},
                       .recordReferences = false});
    auto* const metronome = dynamic_cast<tses::IQueryMetronomeInfoPrivate*>(
        recorder.Wrap(node->Query()).GetMetronomeInfo());
    ASSERT_NE(metronome, nullptr);
    std::array<kelcore::byte, 2> buffer{};
    metronome->GetGlobalTrackInfo()->GetTempoEvents(buffer.data());
    EXPECT_THAT(shown, ElementsAre(-1, -1, 8));
}

}  // namespace
}  // namespace refhost
