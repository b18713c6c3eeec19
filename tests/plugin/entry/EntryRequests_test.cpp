#include <gmock/gmock.h>

#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/kelappsupport/Features.h"
#include "reference_host/recorder/FaultPlan.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/plugin/entry/EntryFixture.h"

// Setting the path, reading and writing.

namespace tses {
namespace {

using refhost::Ref;
using testing::ElementsAre;

/// Throws whenever it is asked for anything.
class ThrowingFileReference final : public refhost::CountedObject<IHostFileRef> {
public:
    void UnusedSlot3() override {}
    IHostString* GetPath() override { throw 42; }
};

/// When it is asked for the path, notes how many objects of the host are alive.
class CountingFileReference final : public refhost::CountedObject<IHostFileRef> {
public:
    std::size_t liveNodes = 0;

    void UnusedSlot3() override {}
    IHostString* GetPath() override {
        liveNodes = refhost::LiveNodes();
        return nullptr;
    }
};

class EntryRequests : public EntryTest {
protected:
    /// What is traced while the session is read or written and the host throws.
    std::vector<std::string> TracedByThrowing(const char* operation, std::exception_ptr thrown) {
        const auto session = refhost::SessionNode::Make();
        refhost::FaultPlan faults;
        faults.Throw(operation, std::move(thrown));
        refhost::Recorder recorder({.sink = {}, .interceptor = faults});
        return TracedBy([&] {
            if (std::string_view(operation).starts_with("IEdit")) {
                EXPECT_EQ(Call(kRead, &recorder.Wrap(session->Edit())), kReadFailed);
            } else {
                EXPECT_EQ(Call(kWrite, &recorder.Wrap(session->Query())), kWriteFailed);
                Call(kReserved, nullptr);
            }
        });
    }
};

TEST_F(EntryRequests, AStreamedSaveGivesTheBytesOfAnyOther) {
    orvo::Session session;
    orvo::AudioTrack& track = session.audioTracks.emplace_back();
    track.name = "Voice & \u2028 \x01";
    track.clips.emplace_back().name = "Take <1>";
    const auto saved = [&](bool streamed) {
        kelappsupport::SetFeatureEnabled("Tembra.StreamedSave", streamed);
        Initialize();
        SetPath(folder / "saved.orvo");
        EXPECT_EQ(Write(session), 0);
        Call(kTerminate, nullptr);
        kelappsupport::SetFeatureEnabled("Tembra.StreamedSave", false);
        return test::ReadFile(folder / "saved.orvo");
    };
    const std::string streamed = saved(true);
    EXPECT_THAT(streamed, testing::HasSubstr("name=\"Take &lt;1>\""));
    EXPECT_EQ(streamed, saved(false));
}

TEST_F(EntryRequests, AWrittenSessionIsRead) {
    Initialize();
    EXPECT_EQ(SetPath(folder / "a.orvo"), 0);
    EXPECT_EQ(Write(), 0);
    EXPECT_EQ(Read(), 0);
}

TEST_F(EntryRequests, AnEmptyPathFailsAReadAndAWrite) {
    Initialize();
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Read(), 0);
    EXPECT_EQ(SetPath(std::u16string()), 0);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(EntryRequests, AFileWithoutAPathLeavesNoPath) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    const auto reference = Ref<CountingFileReference>::Adopt(new CountingFileReference);
    EXPECT_EQ(Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get())), 0);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(EntryRequests, APathThatThrowsLeavesNoPath) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    const auto reference = Ref<ThrowingFileReference>::Adopt(new ThrowingFileReference);
    EXPECT_EQ(Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get())), kReadFailed);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(EntryRequests, AFileThatIsNotASessionFailsTheRead) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<session/>"));
    EXPECT_EQ(Read(), kReadFailed);
    SetPath(folder / "missing.orvo");
    EXPECT_EQ(Read(), kReadFailed);
    SetPath(folder.Path());
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(EntryRequests, AFileThatCannotBeWrittenFailsTheWrite) {
    Initialize();
    SetPath(folder / "missing" / "a.orvo");
    EXPECT_EQ(Write(), kWriteFailed);
}

TEST_F(EntryRequests, TheContextOfAWriteIsHeldUntilTheNextCallWhateverItIs) {
    Initialize();
    SetPath(folder / "a.orvo");
    for (const std::int32_t next : {kReserved, -1, 6, kRead, kSetFilePath, kTerminate}) {
        const std::size_t before = refhost::LiveNodes();
        EXPECT_EQ(Write(), 0);
        EXPECT_GT(refhost::LiveNodes(), before);
        Call(next, nullptr);
        EXPECT_EQ(refhost::LiveNodes(), before) << next;
    }
}

TEST_F(EntryRequests, TheContextIsHeldEvenIfTheWriteFails) {
    Initialize();
    const std::size_t before = refhost::LiveNodes();
    EXPECT_EQ(Write(), kWriteFailed);
    EXPECT_GT(refhost::LiveNodes(), before);
    Call(kReserved, nullptr);
    EXPECT_EQ(refhost::LiveNodes(), before);
}

TEST_F(EntryRequests, TheContextIsReleasedBeforeTheNextCallDoesAnything) {
    Initialize();
    SetPath(folder / "a.orvo");
    const auto reference = Ref<CountingFileReference>::Adopt(new CountingFileReference);
    const std::size_t before = refhost::LiveNodes();
    EXPECT_EQ(Write(), 0);
    Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get()));
    EXPECT_EQ(reference->liveNodes, before);
}

TEST_F(EntryRequests, WhatTheHostThrowsIsTheSelectorsFailure) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo><session/></orvo>"));
    const auto session = refhost::SessionNode::Make();
    for (const char* const operation : {"IEditSession.SetProgress", "IEditSession.SetSampleRate"}) {
        refhost::FaultPlan faults;
        faults.Throw(operation, std::make_exception_ptr(42));
        refhost::Recorder recorder({.sink = {}, .interceptor = faults});
        EXPECT_EQ(Call(kRead, &recorder.Wrap(session->Edit())), kReadFailed) << operation;
    }
    for (const char* const operation :
         {"IQuerySession.GetContext", "IQuerySession.SetProgress", "IQuerySession.GetFormatVersion",
          "IQuerySession.GetSampleRate"}) {
        refhost::FaultPlan faults;
        faults.Throw(operation, std::make_exception_ptr(42));
        refhost::Recorder recorder({.sink = {}, .interceptor = faults});
        EXPECT_EQ(Call(kWrite, &recorder.Wrap(session->Query())), kWriteFailed) << operation;
        Call(kReserved, nullptr);
    }
    EXPECT_EQ(test::ReadFile(folder / "a.orvo"), "<orvo><session/></orvo>");
}

TEST_F(EntryRequests, WhatTheHostThrowsIsTheReasonInTheTrace) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo><session/></orvo>"));
    const auto message = std::make_exception_ptr(std::runtime_error("no room for tracks"));
    EXPECT_THAT(TracedByThrowing("IEditSession.SetProgress", message),
                ElementsAre("app::XMLReader: no room for tracks"));
    EXPECT_THAT(TracedByThrowing("IEditSession.SetSampleRate", message),
                ElementsAre("app::XMLReader: Unexpected XMLReader Exception",
                            "app::XMLReader: no room for tracks"));
    for (const char* const operation : {"IQuerySession.GetContext", "IQuerySession.GetBitDepth"}) {
        EXPECT_THAT(TracedByThrowing(operation, message),
                    ElementsAre("app::XMLWriter: no room for tracks"));
        EXPECT_THAT(
            TracedByThrowing(operation, std::make_exception_ptr(42)),
            ElementsAre("app::XMLWriter: the host threw something that is not a std::exception"));
        EXPECT_THAT(TracedByThrowing(operation, std::make_exception_ptr(std::bad_alloc())),
                    ElementsAre("app::XMLWriter: memory ran out"));
    }
}

TEST_F(EntryRequests, WhatTheHostThrowsForAPathIsTheReasonInTheTrace) {
    Initialize();
    const auto reference = Ref<ThrowingFileReference>::Adopt(new ThrowingFileReference);
    EXPECT_THAT(
        TracedBy([&] { Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get())); }),
        ElementsAre("app::XMLReader: the host threw something that is not a std::exception"));
}

}  // namespace
}  // namespace tses
