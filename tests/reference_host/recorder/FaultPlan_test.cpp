#include "reference_host/recorder/FaultPlan.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace refhost {
namespace {

CallRecord Call(std::string interfaceName, std::string_view operation) {
    CallRecord call;
    call.interfaceName = std::move(interfaceName);
    call.operation = operation;
    return call;
}

std::string Refusal(std::string_view operation) {
    try {
        FaultPlan().ReturnNull(operation);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "accepted";
}

TEST(FaultPlan, ForwardsOperationsThatAreNotNamed) {
    FaultPlan plan;
    plan.ReturnNull("IEditSession.GetFile");
    EXPECT_EQ(plan(Call("IEditSession", "GetAudioTrack")).kind, CallDecision::Kind::Forward);
    EXPECT_EQ(plan(Call("IQuerySession", "GetFile")).kind, CallDecision::Kind::Forward);
}

TEST(FaultPlan, ReturnsNullFromANamedOperationEachTime) {
    FaultPlan plan;
    plan.ReturnNull("IEditSession.GetFile");
    EXPECT_EQ(plan(Call("IEditSession", "GetFile")).kind, CallDecision::Kind::ReturnNull);
    EXPECT_EQ(plan(Call("IEditSession", "GetFile")).kind, CallDecision::Kind::ReturnNull);
}

TEST(FaultPlan, ThrowsTheGivenExceptionFromAnyOperation) {
    FaultPlan plan;
    const auto exception = std::make_exception_ptr(std::runtime_error("fault"));
    plan.Throw("IEditSession.SetSampleRate", exception);
    const CallDecision decision = plan(Call("IEditSession", "SetSampleRate"));
    EXPECT_EQ(decision.kind, CallDecision::Kind::Throw);
    EXPECT_EQ(decision.exception, exception);
}

TEST(FaultPlan, AHostStringCanBeNull) {
    EXPECT_EQ(Refusal("IQueryFile.GetPath"), "accepted");
}

TEST(FaultPlan, AnOperationThatReturnsNoObjectCannotReturnNull) {
    EXPECT_EQ(
        Refusal("IEditSendList.SetSlot"),
        "\"IEditSendList.SetSlot\" is no operation that returns a host object. IEditSendList has "
        "AddSlot.");
    EXPECT_NE(Refusal("IEditSession.SetSampleRate"), "accepted");
}

TEST(FaultPlan, AnUnknownInterfaceIsAnsweredWithTheKnownOnes) {
    const std::string refusal = Refusal("GetFile");
    EXPECT_TRUE(refusal.starts_with(
        "\"GetFile\" is no operation that returns a host object. Name an operation of "
        "IEditSession, IQuerySession, "))
        << refusal;
}

TEST(FaultPlan, AnInheritedOperationIsNamedByTheInterfaceThatDeclaresIt) {
    EXPECT_EQ(Refusal("IEditAudioTrack.CreateAudioClip"), "accepted");
    EXPECT_NE(Refusal("IEditAudioTrackPrivate.CreateAudioClip"), "accepted");
}

TEST(FaultPlan, AnUnknownOperationCannotThrow) {
    EXPECT_THROW(FaultPlan().Throw("IEditSession.SetNothing", nullptr), std::invalid_argument);
}

TEST(FaultPlan, ReturnsTheGivenNumberFromAnOperationThatReturnsOne) {
    FaultPlan plan;
    plan.ReturnNumber("IQuerySession.GetFileCount", 4294967295);
    const CallDecision decision = plan(Call("IQuerySession", "GetFileCount"));
    EXPECT_EQ(decision.kind, CallDecision::Kind::ReturnNumber);
    EXPECT_EQ(decision.number, 4294967295u);
    EXPECT_THROW(plan.ReturnNumber("IQuerySession.GetFile", 1), std::invalid_argument);
    EXPECT_THROW(plan.ReturnNumber("IQuerySession.SetProgress", 1), std::invalid_argument);
}

}  // namespace
}  // namespace refhost
