#include "toolkit/interchange/Carried.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using orvo::AudioClip;
using orvo::Fidelity;
using orvo::InterchangeReport;
using orvo::Session;
using testing::IsEmpty;
using toolkit::interchange::Carried;
using toolkit::interchange::CarriedByAll;
using toolkit::interchange::Reporter;

Session SessionWithOneClip() {
    Session session;
    session.audioTracks = {{.id = 1, .clips = {{.id = 2}}}};
    return session;
}

InterchangeReport ReportOf(const Session& session, const Carried& carried = CarriedByAll()) {
    Reporter reporter(100);
    ReportWhatIsNotCarried(session, carried, reporter);
    return reporter.TakeReport();
}

TEST(Carried, NothingIsReportedOfDefaults) {
    EXPECT_EQ(ReportOf(SessionWithOneClip()), InterchangeReport());
}

TEST(Carried, WhatIsNotMentionedIsLostWithItsPlaceAndValue) {
    Session session = SessionWithOneClip();
    session.audioTracks[0].clips[0].name = "Hello";
    const InterchangeReport report = ReportOf(session);
    ASSERT_EQ(report.Count(Fidelity::Lost), 1u);
    EXPECT_EQ(report.facts[0].place, "/audioTracks/0/audioClips/0/name");
    EXPECT_EQ(report.facts[0].value, "Hello");
}

TEST(Carried, WhatIsHandledIsNotReported) {
    Session session = SessionWithOneClip();
    session.audioTracks[0].clips[0].name = "Hello";
    EXPECT_EQ(ReportOf(session, CarriedByAll().Handles(&AudioClip::name)), InterchangeReport());
}

TEST(Carried, WhatIsLackedByNatureIsCounted) {
    Session session = SessionWithOneClip();
    session.audioTracks[0].clips[0].takes = {1, 2, 3};
    const InterchangeReport report = ReportOf(session);
    EXPECT_THAT(report.facts, IsEmpty());
    EXPECT_EQ(report.lostByNature.at("takes"), 3u);
}

TEST(Carried, MembersOfMembersAreLookedInto) {
    Session session = SessionWithOneClip();
    session.audioTracks[0].clips[0].fadeIn = orvo::Fade{.endPoint = 9};
    const Carried carried = CarriedByAll().LooksInto(&AudioClip::fadeIn).Handles(&orvo::Fade::type);
    ASSERT_EQ(ReportOf(session, carried).facts.size(), 1u);
    EXPECT_EQ(ReportOf(session, carried).facts[0].place,
              "/audioTracks/0/audioClips/0/fadeIn/endPoint");
}

TEST(Carried, AFormatThatHoldsLittleCountsTheRest) {
    Session session = SessionWithOneClip();
    session.audioTracks[0].clips[0].name = "Hello";
    const InterchangeReport report = ReportOf(session, CarriedByAll().CountsTheRest());
    EXPECT_THAT(report.facts, IsEmpty());
    EXPECT_EQ(report.lostByNature.at("name"), 1u);
}

TEST(Carried, ANeutralFaderIsNoLoss) {
    Session session = SessionWithOneClip();
    orvo::Component& fader = session.audioTracks[0].fader.emplace();
    fader.name = "Fader";
    fader.parameters[0] = {.value = 0.0F, .name = "Level"};
    EXPECT_EQ(ReportOf(session), InterchangeReport());
    fader.parameters[0].value = -6.0F;
    EXPECT_EQ(ReportOf(session).Count(Fidelity::Lost), 1u);
    fader.parameters[0] = {.value = 0.0F, .automation = orvo::AutomationLane()};
    EXPECT_EQ(ReportOf(session).Count(Fidelity::Lost), 1u);
}

}  // namespace
