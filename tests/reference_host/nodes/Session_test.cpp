#include "reference_host/nodes/Session.h"

#include <gmock/gmock.h>

#include "reference_host/SessionNode.h"
#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

using ::testing::ElementsAre;

class SessionTest : public test::NoLiveNodes {
protected:
    static Ref<SessionNode> Edited(const std::function<void(tses::IEditSession&)>& edit) {
        auto session = SessionNode::Make();
        edit(session->Edit());
        return session;
    }
};

TEST_F(SessionTest, EditingFillsTheFormat) {
    const auto session = Edited([](tses::IEditSession& edit) {
        edit.SetSampleRate(44100);
        edit.SetChannelCount(-6);
        edit.SetDuration(-1);
        edit.SetBitDepth(24);
        edit.SetFormatDescription(u"a session");
        edit.SetVersionDependentValue(12);
    });
    const orvo::Session& model = session->Value();
    EXPECT_EQ(model.sampleRate, 44100U);
    EXPECT_EQ(model.audioChannelType, orvo::ChannelType{static_cast<kelcore::uint32>(-6)});
    EXPECT_EQ(model.duration, -1);
    EXPECT_EQ(model.bitDepth, 24U);
    EXPECT_EQ(model.formatDescription, "a session");
    EXPECT_EQ(model.versionDependentValue, 12);
}

TEST_F(SessionTest, QueryingReportsTheFormat) {
    const auto session = SessionNode::Make({.formatVersion = {2, 7},
                                            .sampleRate = 44100,
                                            .audioChannelType = orvo::ChannelType::FivePointOne,
                                            .duration = 99,
                                            .bitDepth = 16});
    tses::IQuerySession& query = session->Query();
    kelcore::int32 major = 0;
    kelcore::int32 minor = 0;
    query.GetFormatVersion(&major, &minor);
    EXPECT_EQ(major, 2);
    EXPECT_EQ(minor, 7);
    EXPECT_EQ(query.GetSampleRate(), 44100U);
    EXPECT_EQ(query.GetChannelCount(), 6);
    EXPECT_EQ(query.GetDuration(), 99);
    EXPECT_EQ(query.GetBitDepth(), 16U);
}

TEST_F(SessionTest, EditingFillsTheAudioDevice) {
    const auto session = Edited([](tses::IEditSession& edit) {
        edit.SetInputDeviceId(u"in");
        edit.SetOutputDeviceId(u"out");
        edit.AddInputPort(-1, u"Mic");
        edit.AddOutputPort(1, u"Left");
        edit.AddOutputPort(2, u"Right");
    });
    EXPECT_EQ(session->Value().audioDevice,
              (orvo::AudioDevice{"in", "out", {{-1, "Mic"}}, {{1, "Left"}, {2, "Right"}}}));
}

TEST_F(SessionTest, QueryingReportsTheAudioDevice) {
    const auto session = SessionNode::Make(
        {.audioDevice = {"in", "out", {{-1, "Mic"}}, {{1, "Left"}, {2, "Right"}}}});
    tses::IQuerySession& query = session->Query();
    EXPECT_EQ(TextOf(query.GetInputDeviceId()), u"in");
    EXPECT_EQ(TextOf(query.GetOutputDeviceId()), u"out");
    ASSERT_EQ(query.GetInputPortCount(), 1U);
    EXPECT_EQ(query.GetInputPortId(0), -1);
    EXPECT_EQ(TextOf(query.GetInputPortName(0)), u"Mic");
    ASSERT_EQ(query.GetOutputPortCount(), 2U);
    EXPECT_EQ(query.GetOutputPortId(1), 2);
    EXPECT_EQ(TextOf(query.GetOutputPortName(1)), u"Right");
}

TEST_F(SessionTest, ThereIsNoLogTargetUnlessOneIsSet) {
    const auto session = SessionNode::Make();
    EXPECT_EQ(session->Edit().GetLogTarget(), nullptr);
    const auto target = Ref<LogTarget>::Adopt(new LogTarget);
    session->SetLogTarget(target);
    EXPECT_EQ(session->Edit().GetLogTarget(), target.Get());
}

TEST_F(SessionTest, BothFacesCollectProgress) {
    const auto session = SessionNode::Make();
    std::vector<kelcore::uint32> heard;
    session->SetProgressListener(
        [&heard](const Progress& progress) { heard.push_back(progress.done); });
    session->Edit().SetProgress(1, 7, 0, 0);
    session->Query().SetProgress(2, 7, 0, 1);
    EXPECT_THAT(session->Reports(), ElementsAre(Progress{1, 7, 0, 0}, Progress{2, 7, 0, 1}));
    EXPECT_THAT(heard, ElementsAre(1U, 2U));
}

TEST_F(SessionTest, EachPartThatAReadBeginsIsReportedBeforeItIsThere) {
    const auto session = SessionNode::Make();
    std::vector<std::size_t> clips;
    const orvo::Session& value = session->Value();
    session->SetPartListener([&] {
        clips.push_back(value.audioTracks.empty() ? 0
                                                  : value.audioTracks[0].clips.size() +
                                                        value.audioTracks[0].midiClips.size());
    });
    const auto track = Ref<tses::IEditAudioTrack>::Retain(session->Edit().GetAudioTrack(1));
    track->CreateAudioClip(1);
    track->GetMIDIClipList()->CreateMIDIClip(2);
    session->Edit().GetFile(1);
    session->Edit().CreateClipGroup(1);
    EXPECT_THAT(clips, ElementsAre(0U, 0U, 1U, 2U, 2U));
}

TEST_F(SessionTest, TheContextOfAWriteIsTheSession) {
    auto session = SessionNode::Make();
    auto context = Ref<tses::IHostObject>::Retain(session->Query().GetContext());
    session.Reset();
    EXPECT_EQ(LiveNodes(), 1U);
    context.Reset();
    EXPECT_EQ(LiveNodes(), 0U);
}

}  // namespace
}  // namespace refhost
