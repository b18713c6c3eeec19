#include "tests/plugin/elements/HostOutputs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <variant>

#include "tests/plugin/EverythingSession.h"
#include "tests/support/SerializerFixture.h"

// If a host leaves an output alone, the output has a stated value, even if the host filled it in an
// earlier call.

namespace tses {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Truly;

bool IsZero(const refhost::TraceValue& value) {
    return std::visit(
        [](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_arithmetic_v<Held>) {
                return held == Held{};
            }
            return false;
        },
        value);
}

class Outputs : public test::SerializerFixture {
protected:
    std::vector<std::vector<refhost::TraceValue>> Before(std::string_view operation,
                                                         std::size_t filled = 0) {
        return test::OutputsBefore(operation, test::EverythingSession("/media/"), *serializer,
                                   Path(), filled);
    }
};

/// The name of a test: "GetSelection" for "IQuerySession.GetSelection".
std::string OperationOf(const testing::TestParamInfo<const char*>& parameter) {
    const std::string name = parameter.param;
    return name.substr(name.find('.') + 1);
}

class OutputsOf : public Outputs, public testing::WithParamInterface<const char*> {};

TEST_P(OutputsOf, AreZeroBeforeTheFirstCall) {
    const auto outputs = Before(GetParam());
    ASSERT_FALSE(outputs.empty());
    EXPECT_THAT(outputs, Each(Each(Truly(IsZero))));
    EXPECT_FALSE(outputs.front().empty());
}

INSTANTIATE_TEST_SUITE_P(
    EveryOperation, OutputsOf,
    testing::Values("IQueryAutomationLane.GetKeyframe", "IQueryClipGroup.GetItem",
                    "IQueryComponent.GetEditorRect", "IQueryEffectsSlot.GetInputChannel",
                    "IQueryEffectsSlot.GetOutputChannel", "IQuerySession.GetCtiPosition",
                    "IQuerySession.GetMusicalTime", "IQuerySession.GetSelection",
                    "IQuerySession.GetSmpteStart", "IQuerySession.GetTimeFormat",
                    "IQuerySession.GetViewState"),
    OperationOf);

class OutputsOfEach : public OutputsOf {};

TEST_P(OutputsOfEach, AreZeroAgainBeforeTheNextCall) {
    const auto outputs = Before(GetParam(), 1);
    ASSERT_FALSE(outputs.empty());
    EXPECT_THAT(outputs, Each(Each(Truly(IsZero))));
}

INSTANTIATE_TEST_SUITE_P(EveryOperationInALoop, OutputsOfEach,
                         testing::Values("IQueryAutomationLane.GetKeyframe",
                                         "IQueryClipGroup.GetItem", "IQueryComponent.GetEditorRect",
                                         "IQueryEffectsSlot.GetInputChannel",
                                         "IQueryEffectsSlot.GetOutputChannel"),
                         OperationOf);

TEST_F(Outputs, OfThePanModeAreItsDefaults) {
    EXPECT_THAT(Before("IQuerySession.GetPanMode"), ElementsAre(ElementsAre(false, -3.0)));
}

}  // namespace
}  // namespace tses
