#include "reference_host/Node.h"

#include "host/Files.h"
#include "reference_host/SessionNode.h"
#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

class NodeTest : public test::NoLiveNodes {
protected:
    Ref<SessionNode> session_ = SessionNode::Make();

    void TearDown() override {
        session_.Reset();
        NoLiveNodes::TearDown();
    }
};

TEST_F(NodeTest, ASessionIsAliveWhileItsMakerHoldsIt) {
    EXPECT_EQ(LiveNodes(), 1U);
    session_.Reset();
    EXPECT_EQ(LiveNodes(), 0U);
}

TEST_F(NodeTest, AFaceCountsForItsNode) {
    const auto face = Ref<tses::IQuerySession>::Retain(&session_->Query());
    session_.Reset();
    EXPECT_EQ(LiveNodes(), 1U);
    EXPECT_EQ(face->GetSampleRate(), 48000U);
}

TEST_F(NodeTest, AChildKeepsItsParentAlive) {
    const auto file = Ref<tses::IEditFile>::Retain(session_->Edit().GetFile(1));
    session_.Reset();
    EXPECT_EQ(LiveNodes(), 2U);
    file->SetPath(u"/still/there.wav");
}

TEST_F(NodeTest, AChildGoesWithItsLastReference) {
    auto file = Ref<tses::IEditFile>::Retain(session_->Edit().GetFile(1));
    EXPECT_EQ(LiveNodes(), 2U);
    file.Reset();
    EXPECT_EQ(LiveNodes(), 1U);
}

TEST_F(NodeTest, AChildThatNobodyReferencedGoesWithItsParent) {
    session_->Edit().GetFile(1);
    EXPECT_EQ(LiveNodes(), 2U);
    session_.Reset();
    EXPECT_EQ(LiveNodes(), 0U);
}

TEST_F(NodeTest, AChildIsTheSameObjectWhileItIsHeld) {
    const auto file = Ref<tses::IEditFile>::Retain(session_->Edit().GetFile(1));
    EXPECT_EQ(session_->Edit().GetFile(1), file.Get());
    EXPECT_NE(session_->Edit().GetFile(2), file.Get());
}

TEST_F(NodeTest, BothFacesOfAThingShareOneNode) {
    const auto edit = Ref<tses::IEditFile>::Retain(session_->Edit().GetFile(1));
    const auto query = Ref<tses::IQueryFile>::Retain(session_->Query().GetFile(0));
    EXPECT_EQ(LiveNodes(), 2U);
    edit->SetPath(u"/one.wav");
    EXPECT_EQ(TextOf(query->GetPath()), u"/one.wav");
}

TEST_F(NodeTest, AChildStaysValidWhenItsListGrows) {
    const auto first = Ref<tses::IEditFile>::Retain(session_->Edit().GetFile(1));
    for (kelcore::uint32 id = 2; id < 1000; ++id) {
        session_->Edit().GetFile(id);
    }
    first->SetPath(u"/first.wav");
    EXPECT_EQ(session_->Value().files[0].path, "/first.wav");
}

TEST_F(NodeTest, AStringOutlivesTheNodeThatGaveIt) {
    session_->Edit().SetInputDeviceId(u"device");
    auto string = Ref<tses::IHostString>::Retain(session_->Query().GetInputDeviceId());
    session_.Reset();
    EXPECT_EQ(TextOf(string.Get()), u"device");
    EXPECT_EQ(LiveNodes(), 1U);
}

TEST_F(NodeTest, AStringDoesNotChangeWhileItIsHeld) {
    session_->Edit().SetInputDeviceId(u"before");
    const auto string = Ref<tses::IHostString>::Retain(session_->Query().GetInputDeviceId());
    session_->Edit().SetInputDeviceId(u"after");
    EXPECT_EQ(TextOf(string.Get()), u"before");
    EXPECT_EQ(TextOf(session_->Query().GetInputDeviceId()), u"after");
}

TEST_F(NodeTest, OneReleaseTooManyEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    tses::IEditFile* const file = session_->Edit().GetFile(1);
    EXPECT_DEATH(file->Release(), "released more often than it was referenced");
}

}  // namespace
}  // namespace refhost
