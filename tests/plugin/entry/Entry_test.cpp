#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Localizer.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "platform/kelui/ResourceManager.h"
#include "reference_host/FileReference.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/PluginLibrary.h"
#include "reference_host/SessionNode.h"
#include "reference_host/recorder/FaultPlan.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/support/Registrar.h"
#include "tests/support/TemporaryFolder.h"

// The exported function, called as a host calls it: in the built library, after loading it.

namespace tses {
namespace {

using refhost::FileReference;
using refhost::Ref;
using test::Registrar;
using testing::ElementsAre;

constexpr std::int32_t kInitialize = 0;
constexpr std::int32_t kReserved = 1;
constexpr std::int32_t kTerminate = 2;
constexpr std::int32_t kSetFilePath = 3;
constexpr std::int32_t kRead = 4;
constexpr std::int32_t kWrite = 5;

constexpr std::int32_t kUnknownSelector = -2;
constexpr std::int32_t kReadFailed = -4;
constexpr std::int32_t kNullArgument = -6;
constexpr std::int32_t kWriteFailed = -10;

/// Throws whenever it is asked for anything.
class ThrowingFileReference final : public refhost::CountedObject<IHostFileRef> {
public:
    void UnusedSlot3() override {}
    IHostString* GetPath() override { throw 42; }
};

/// Notes every registration in one list.
class OrderRegistrar final : public refhost::CountedObject<IPlugInRegistrar> {
public:
    std::vector<std::string> calls;

    void UnusedSlot3() override {}
    void DeclareInterfaceVersion(kelcore::int32 /*a*/, kelcore::int32 /*b*/) override {
        calls.emplace_back("version");
    }
    void UnusedSlot5() override {}
    void SetPlugInIdentity(const char* /*guid*/, const kelcore::char16* /*displayName*/) override {
        calls.emplace_back("identity");
    }
    void RegisterOpenFormat(const kelcore::char16* /*formatName*/,
                            const kelcore::char16* const* /*extensions*/,
                            kelcore::int32 /*extensionCount*/) override {
        calls.emplace_back("open format");
    }
    void RegisterSaveFormat(const kelcore::char16* /*formatName*/,
                            const kelcore::char16* const* /*extensions*/,
                            kelcore::int32 /*extensionCount*/) override {
        calls.emplace_back("save format");
        if (throws) {
            throw 42;
        }
    }

    bool throws = false;
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

class Entry : public testing::Test {
protected:
    ~Entry() override {
        Call(kTerminate, nullptr);
        EXPECT_EQ(refhost::LiveNodes(), 1u) << "only the registrar is alive";
    }

    std::int32_t Call(std::int32_t selector, void* argument) {
        return library.Call(selector, argument);
    }
    std::int32_t Initialize() {
        return Call(kInitialize, static_cast<IPlugInRegistrar*>(registrar.Get()));
    }

    std::int32_t SetPath(const std::u16string& path) {
        const auto reference = Ref<FileReference>::Adopt(new FileReference(path));
        return Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get()));
    }
    std::int32_t SetPath(const std::filesystem::path& path) {
        return SetPath(kelcore::PathFromBytes(path.string()));
    }
    std::int32_t Read() {
        const auto session = refhost::SessionNode::Make();
        return Call(kRead, &session->Edit());
    }
    std::int32_t Write() {
        const auto session = refhost::SessionNode::Make();
        return Call(kWrite, &session->Query());
    }

    refhost::PluginLibrary library{refhost::DefaultPluginPath()};
    Ref<Registrar> registrar = Ref<Registrar>::Adopt(new Registrar);
    /// What is traced while `call` runs, with its category.
    static std::vector<std::string> TracedBy(const std::function<void()>& call) {
        std::vector<std::string> lines;
        kelcore::trace::SetOutput([&](std::string_view category, std::string_view text) {
            lines.push_back(std::string(category) + ": " + std::string(text));
        });
        call();
        kelcore::trace::SetOutput({});
        return lines;
    }
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

    test::TemporaryFolder folder;
};

TEST_F(Entry, RegistersIdentityAndBothFormats) {
    EXPECT_EQ(Initialize(), 0);
    EXPECT_THAT(registrar->Identities(),
                ElementsAre(Registrar::Identity{"7A1C9E52-3B6D-4f08-A2E4-5D93C07B1F68",
                                                u"Tembra Orvo plug-in"}));
    const Registrar::Format format{u"Tembra Session", {u"orvo"}};
    EXPECT_THAT(registrar->OpenFormats(), ElementsAre(format));
    EXPECT_THAT(registrar->SaveFormats(), ElementsAre(format));
}

TEST_F(Entry, DeclaresTheInterfaceVersionTwice) {
    Initialize();
    const Registrar::InterfaceVersion version{1, 9};
    EXPECT_THAT(registrar->InterfaceVersions(), ElementsAre(version, version));
}

TEST_F(Entry, TheNamesAreLocalised) {
    kelcore::Localizer::SetTranslation("$$$/TembraSessionPlugIns/OrvoNative/PlugInName",
                                       u"Orvo-Zusatz");
    kelcore::Localizer::SetTranslation("$$$/TembraSessionPlugIns/OrvoNative/FormatNameOrvoNative",
                                       u"Tembra-Sitzung");
    Initialize();
    kelcore::Localizer::Clear();
    EXPECT_EQ(registrar->Identities().at(0).displayName, u"Orvo-Zusatz");
    EXPECT_EQ(registrar->OpenFormats().at(0).name, u"Tembra-Sitzung");
}

TEST_F(Entry, AStreamedSaveGivesTheBytesOfAnyOther) {
    const auto saved = [this](bool streamed) {
        kelappsupport::SetFeatureEnabled("Tembra.StreamedSave", streamed);
        Initialize();
        SetPath(folder / "saved.orvo");
        EXPECT_EQ(Write(), 0);
        Call(kTerminate, nullptr);
        kelappsupport::SetFeatureEnabled("Tembra.StreamedSave", false);
        return test::ReadFile(folder / "saved.orvo");
    };
    EXPECT_EQ(saved(true), saved(false));
}

TEST_F(Entry, AnUnknownSelectorIsRefusedBeforeAndAfterInitialising) {
    for (const std::int32_t selector : {6, 7, 20, -1, -10, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(Call(selector, nullptr), kUnknownSelector) << selector;
    }
    Initialize();
    EXPECT_EQ(Call(6, registrar.Get()), kUnknownSelector);
    EXPECT_EQ(Call(-1, registrar.Get()), kUnknownSelector);
}

TEST_F(Entry, ANullArgumentIsRefusedIfOneIsNeeded) {
    for (const std::int32_t selector : {kInitialize, kSetFilePath, kRead, kWrite}) {
        EXPECT_EQ(Call(selector, nullptr), kNullArgument) << selector;
    }
}

TEST_F(Entry, SelectorsOneAndTwoAcceptANullArgument) {
    EXPECT_EQ(Call(kReserved, nullptr), 0);
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
}

TEST_F(Entry, BeforeInitialisingReadAndWriteSucceedAndDoNothing) {
    SetPath(folder / "a.orvo");
    const auto session = refhost::SessionNode::Make();
    EXPECT_EQ(Call(kRead, &session->Edit()), 0);
    EXPECT_EQ(Call(kWrite, &session->Query()), 0);
    EXPECT_TRUE(session->Reports().empty());
    EXPECT_FALSE(std::filesystem::exists(folder / "a.orvo"));
    Call(kReserved, nullptr);
}

TEST_F(Entry, AfterAFailedInitialiseReadAndWriteSucceedAndReportNothing) {
    const auto order = Ref<OrderRegistrar>::Adopt(new OrderRegistrar);
    order->throws = true;
    EXPECT_EQ(Call(kInitialize, static_cast<IPlugInRegistrar*>(order.Get())), kReadFailed);
    SetPath(folder / "a.orvo");
    const auto session = refhost::SessionNode::Make();
    EXPECT_EQ(Call(kRead, &session->Edit()), 0);
    EXPECT_EQ(Call(kWrite, &session->Query()), 0);
    EXPECT_TRUE(session->Reports().empty());
    EXPECT_FALSE(std::filesystem::exists(folder / "a.orvo"));
    Call(kReserved, nullptr);
}

TEST_F(Entry, TheInstrumentTracksOfTheHostCountFromTheNextInitialise) {
    SetPath(folder.Write("a.orvo",
                         "<orvo><session><tracks><instrumentTrack id='3'/></tracks></session>"
                         "</orvo>"));
    const auto tracksRead = [&] {
        const auto session = refhost::SessionNode::Make();
        EXPECT_EQ(Call(kRead, &session->Edit()), 0);
        return session->Value().audioTracks.size();
    };
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    Initialize();
    EXPECT_EQ(tracksRead(), 0u);
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", true);
    EXPECT_EQ(tracksRead(), 0u);
    Call(kTerminate, nullptr);
    Initialize();
    EXPECT_EQ(tracksRead(), 1u);
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
}

TEST_F(Entry, AWrittenSessionIsRead) {
    Initialize();
    EXPECT_EQ(SetPath(folder / "a.orvo"), 0);
    EXPECT_EQ(Write(), 0);
    EXPECT_EQ(Read(), 0);
}

TEST_F(Entry, AnEmptyPathFailsAReadAndAWrite) {
    Initialize();
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Read(), 0);
    EXPECT_EQ(SetPath(std::u16string()), 0);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(Entry, AFileWithoutAPathLeavesNoPath) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    const auto reference = Ref<CountingFileReference>::Adopt(new CountingFileReference);
    EXPECT_EQ(Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get())), 0);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(Entry, APathThatThrowsLeavesNoPath) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    const auto reference = Ref<ThrowingFileReference>::Adopt(new ThrowingFileReference);
    EXPECT_EQ(Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get())), kReadFailed);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(Entry, AFileThatIsNoSessionFailsTheRead) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<session/>"));
    EXPECT_EQ(Read(), kReadFailed);
    SetPath(folder / "missing.orvo");
    EXPECT_EQ(Read(), kReadFailed);
    SetPath(folder.Path());
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(Entry, AFileThatCannotBeWrittenFailsTheWrite) {
    Initialize();
    SetPath(folder / "missing" / "a.orvo");
    EXPECT_EQ(Write(), kWriteFailed);
}

TEST_F(Entry, TheContextOfAWriteIsHeldUntilTheNextCallWhateverItIs) {
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

TEST_F(Entry, TheContextIsHeldEvenIfTheWriteFails) {
    Initialize();
    const std::size_t before = refhost::LiveNodes();
    EXPECT_EQ(Write(), kWriteFailed);
    EXPECT_GT(refhost::LiveNodes(), before);
    Call(kReserved, nullptr);
    EXPECT_EQ(refhost::LiveNodes(), before);
}

TEST_F(Entry, TheContextIsReleasedBeforeTheNextCallDoesAnything) {
    Initialize();
    SetPath(folder / "a.orvo");
    const auto reference = Ref<CountingFileReference>::Adopt(new CountingFileReference);
    const std::size_t before = refhost::LiveNodes();
    EXPECT_EQ(Write(), 0);
    Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get()));
    EXPECT_EQ(reference->liveNodes, before);
}

TEST_F(Entry, RegistersInTheOrderThatHostsExpect) {
    const auto order = Ref<OrderRegistrar>::Adopt(new OrderRegistrar);
    EXPECT_EQ(Call(kInitialize, static_cast<IPlugInRegistrar*>(order.Get())), 0);
    EXPECT_THAT(order->calls,
                ElementsAre("version", "identity", "version", "open format", "save format"));
}

TEST_F(Entry, ARegistrarThatThrowsFailsTheCallAndTerminateStillTidiesUp) {
    const auto order = Ref<OrderRegistrar>::Adopt(new OrderRegistrar);
    order->throws = true;
    Initialize();
    Call(kTerminate, nullptr);
    EXPECT_EQ(Call(kInitialize, static_cast<IPlugInRegistrar*>(order.Get())), kReadFailed);
    EXPECT_NE(kelui::PlugInResourceManager(), nullptr);
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(kelui::PlugInResourceManager(), nullptr);
}

TEST_F(Entry, TerminateBeforeInitialiseTouchesNothingOfTheProcess) {
    kelui::InstallPlugInResourceManager(std::make_unique<kelui::OS_ResourceManager>(nullptr));
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_NE(kelui::PlugInResourceManager(), nullptr);
    kelui::InstallPlugInResourceManager(nullptr);
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    Call(kReserved, nullptr);
}

TEST_F(Entry, WhatTheHostThrowsIsTheSelectorsFailure) {
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

TEST_F(Entry, WhatTheHostThrowsIsTheReasonInTheTrace) {
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
            ElementsAre("app::XMLWriter: the host threw something that is no std::exception"));
        EXPECT_THAT(TracedByThrowing(operation, std::make_exception_ptr(std::bad_alloc())),
                    ElementsAre("app::XMLWriter: memory ran out"));
    }
}

TEST_F(Entry, WhatTheHostThrowsForAPathIsTheReasonInTheTrace) {
    Initialize();
    const auto reference = Ref<ThrowingFileReference>::Adopt(new ThrowingFileReference);
    EXPECT_THAT(TracedBy([&] { Call(kSetFilePath, static_cast<IHostFileRef*>(reference.Get())); }),
                ElementsAre("app::XMLReader: the host threw something that is no std::exception"));
}

TEST_F(Entry, AfterTerminateTheTraceSaysWhyNothingIsReadOrWritten) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    Call(kTerminate, nullptr);
    EXPECT_THAT(TracedBy([&] { Read(); }),
                ElementsAre("app::XMLReader: the plug-in was terminated: initialise it first"));
    EXPECT_THAT(TracedBy([&] { Write(); }),
                ElementsAre("app::XMLWriter: the plug-in was terminated: initialise it first"));
    Call(kReserved, nullptr);
}

TEST_F(Entry, AfterTerminateAFailedInitialiseLeavesReadsAndWritesFailing) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    Call(kTerminate, nullptr);
    const auto order = Ref<OrderRegistrar>::Adopt(new OrderRegistrar);
    order->throws = true;
    EXPECT_EQ(Call(kInitialize, static_cast<IPlugInRegistrar*>(order.Get())), kReadFailed);
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    Call(kReserved, nullptr);
    EXPECT_EQ(Initialize(), 0);
    EXPECT_EQ(Read(), 0);
}

TEST_F(Entry, AFailedInitialiseLeavesAReadyPlugInReady) {
    Initialize();
    const auto order = Ref<OrderRegistrar>::Adopt(new OrderRegistrar);
    order->throws = true;
    EXPECT_EQ(Call(kInitialize, static_cast<IPlugInRegistrar*>(order.Get())), kReadFailed);
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Read(), 0);
    SetPath(folder.Write("b.orvo", "<score/>"));
    EXPECT_EQ(Read(), kReadFailed) << "the plug-in must still read";
}

TEST_F(Entry, AfterTerminateReadsAndWritesFail) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    Call(kReserved, nullptr);
    EXPECT_EQ(test::ReadFile(folder / "a.orvo"), "<orvo/>");
}

TEST_F(Entry, ASecondTerminateDoesNothing) {
    Initialize();
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(Entry, InitialisingAgainAfterTerminateWorks) {
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Initialize(), 0);
        EXPECT_EQ(Read(), 0);
        EXPECT_EQ(Call(kTerminate, nullptr), 0);
    }
}

TEST_F(Entry, InitialisingTwiceWorks) {
    Initialize();
    EXPECT_EQ(Initialize(), 0);
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Read(), 0);
}

TEST_F(Entry, TheResourceManagerIsThePlugInsOwnAndGoesWithIt) {
    EXPECT_EQ(kelui::PlugInResourceManager(), nullptr);
    Initialize();
    ASSERT_NE(kelui::PlugInResourceManager(), nullptr);
    EXPECT_EQ(
        std::filesystem::path(kelcore::PathToBytes(kelui::PlugInResourceManager()->ModulePath()))
            .filename(),
        "OrvoNative.so");
    Call(kTerminate, nullptr);
    EXPECT_EQ(kelui::PlugInResourceManager(), nullptr);
}

TEST(LoadedLibrary, LeavesTheProcessWhenItIsClosed) {
    const auto isLoaded = [] {
        void* const handle = ::dlopen(refhost::DefaultPluginPath().c_str(), RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr) {
            ::dlclose(handle);
        }
        return handle != nullptr;
    };
    const auto registrar = Ref<Registrar>::Adopt(new Registrar);
    {
        refhost::PluginLibrary library{refhost::DefaultPluginPath()};
        library.Call(kInitialize, static_cast<IPlugInRegistrar*>(registrar.Get()));
        library.Call(kTerminate, nullptr);
        EXPECT_TRUE(isLoaded());
    }
    EXPECT_FALSE(isLoaded());
}

TEST(LoadedLibrary, ReleasesTheContextOfTheLastWriteWhenItIsClosed) {
    const std::size_t before = refhost::LiveNodes();
    {
        refhost::PluginLibrary library{refhost::DefaultPluginPath()};
        const auto session = refhost::SessionNode::Make();
        library.Call(kWrite, &session->Query());
    }
    EXPECT_EQ(refhost::LiveNodes(), before);
}

}  // namespace
}  // namespace tses
