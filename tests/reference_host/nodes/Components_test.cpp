#include "reference_host/nodes/Components.h"

#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

class ComponentsTest : public ::testing::Test {
protected:
    orvo::Component component_;
    ComponentNode* const node_ =
        new ComponentNode([this]() -> orvo::Component& { return component_; });
    const Ref<ComponentNode> hold_ = Ref<ComponentNode>::Retain(node_);
    EditComponent& edit_ = node_->Edit();
    QueryComponent& query_ = node_->Query();
};

TEST_F(ComponentsTest, ParametersMayLeaveGaps) {
    edit_.SetParameterValue(3, 0.5F);
    edit_.SetParameterValue(1, 0.25F);
    EXPECT_EQ(query_.GetParameterCount(), 4U);
    float value = 7;
    EXPECT_FALSE(query_.GetParameterValue(0, value));
    EXPECT_FALSE(query_.GetParameterValue(2, value));
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(query_.GetParameterValue(3, value));
    EXPECT_EQ(value, 0.5F);
}

TEST_F(ComponentsTest, AParameterMayHaveNoValue) {
    component_.parameters[2].name = "gone";
    float value = 0;
    EXPECT_EQ(query_.GetParameterCount(), 3U);
    EXPECT_FALSE(query_.GetParameterValue(2, value));
    EXPECT_EQ(TextOf(query_.GetParameterName(2)), u"gone");
}

TEST_F(ComponentsTest, AMissingParameterHasNothing) {
    EXPECT_EQ(query_.GetParameterName(0), nullptr);
    EXPECT_EQ(query_.GetParameterAutomation(0), nullptr);
    EXPECT_FALSE(query_.IsParameterSafeDuringWrite(0));
}

TEST_F(ComponentsTest, ALaneExistsOnceItWasAskedFor) {
    edit_.SetParameterValue(5, 1);
    EXPECT_EQ(query_.GetParameterAutomation(5), nullptr);
    edit_.GetParameterAutomation(5)->AddKeyframe(1, 100, true, false);
    ASSERT_NE(query_.GetParameterAutomation(5), nullptr);
    EXPECT_EQ(query_.GetParameterAutomation(5)->GetKeyframeCount(), 1U);
}

TEST_F(ComponentsTest, ALaneIsTheSameObjectWhileItIsHeld) {
    const auto lane = Ref<tses::IEditAutomationLane>::Retain(edit_.GetParameterAutomation(5));
    EXPECT_EQ(edit_.GetParameterAutomation(5), lane.Get());
    EXPECT_NE(edit_.GetParameterAutomation(4), lane.Get());
}

TEST_F(ComponentsTest, AParameterThatCannotBeCountedIsKeptWithAllThatItHas) {
    edit_.SetParameterValue(4294967295, 1);
    edit_.SetParameterName(4294967295, u"name");
    edit_.SetParameterSafeDuringWrite(4294967295, true);
    ASSERT_NE(edit_.GetParameterAutomation(4294967295), nullptr);
    edit_.GetParameterAutomation(4294967295)->AddKeyframe(1, 100, true, false);
    const orvo::Parameter& parameter = component_.parameters.at(4294967295);
    EXPECT_EQ(parameter.value, 1);
    EXPECT_EQ(parameter.name, "name");
    EXPECT_TRUE(parameter.safeDuringWrite);
    EXPECT_EQ(parameter.automation->keyframes.size(), 1U);
    EXPECT_EQ(query_.GetParameterCount(), 4294967295U);
}

TEST_F(ComponentsTest, TheCountOfParametersEndsAtTheLargestNumber) {
    component_.parameters[4294967295];
    EXPECT_EQ(query_.GetParameterCount(), 4294967295U);
}

TEST_F(ComponentsTest, APresetExistsIfItHasAName) {
    EXPECT_EQ(query_.GetPreset(), nullptr);
    edit_.SetPresetName(u"Warm");
    ASSERT_NE(query_.GetPreset(), nullptr);
    EXPECT_EQ(TextOf(query_.GetPreset()->GetName()), u"Warm");
}

}  // namespace
}  // namespace refhost
