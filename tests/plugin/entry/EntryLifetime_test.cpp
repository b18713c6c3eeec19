#include <dlfcn.h>
#include <gmock/gmock.h>

#include <memory>

#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Localizer.h"
#include "platform/kelui/ResourceManager.h"
#include "tests/plugin/entry/EntryFixture.h"

// Registering, initialising and terminating, and what each leaves behind.

namespace tses {
namespace {

using refhost::Ref;
using test::Registrar;
using testing::ElementsAre;

class EntryLifetime : public EntryTest {};

TEST_F(EntryLifetime, RegistersIdentityAndBothFormats) {
    EXPECT_EQ(Initialize(), 0);
    EXPECT_THAT(registrar->Identities(),
                ElementsAre(Registrar::Identity{"7A1C9E52-3B6D-4f08-A2E4-5D93C07B1F68",
                                                u"Tembra Orvo plug-in"}));
    const Registrar::Format format{u"Tembra Session", {u"orvo"}};
    EXPECT_THAT(registrar->OpenFormats(), ElementsAre(format));
    EXPECT_THAT(registrar->SaveFormats(), ElementsAre(format));
}

TEST_F(EntryLifetime, DeclaresTheInterfaceVersionTwice) {
    Initialize();
    const Registrar::InterfaceVersion version{1, 9};
    EXPECT_THAT(registrar->InterfaceVersions(), ElementsAre(version, version));
}

TEST_F(EntryLifetime, TheNamesAreLocalised) {
    kelcore::Localizer::SetTranslation("$$$/TembraSessionPlugIns/OrvoNative/PlugInName",
                                       u"Orvo-Zusatz");
    kelcore::Localizer::SetTranslation("$$$/TembraSessionPlugIns/OrvoNative/FormatNameOrvoNative",
                                       u"Tembra-Sitzung");
    Initialize();
    kelcore::Localizer::Clear();
    EXPECT_EQ(registrar->Identities().at(0).displayName, u"Orvo-Zusatz");
    EXPECT_EQ(registrar->OpenFormats().at(0).name, u"Tembra-Sitzung");
}

TEST_F(EntryLifetime, AnUnknownSelectorIsRefusedBeforeAndAfterInitialising) {
    for (const std::int32_t selector : {6, 7, 20, -1, -10, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(Call(selector, nullptr), kUnknownSelector) << selector;
    }
    Initialize();
    EXPECT_EQ(Call(6, registrar.Get()), kUnknownSelector);
    EXPECT_EQ(Call(-1, registrar.Get()), kUnknownSelector);
}

TEST_F(EntryLifetime, ANullArgumentIsRefusedIfOneIsNeeded) {
    for (const std::int32_t selector : {kInitialize, kSetFilePath, kRead, kWrite}) {
        EXPECT_EQ(Call(selector, nullptr), kNullArgument) << selector;
    }
}

TEST_F(EntryLifetime, SelectorsOneAndTwoAcceptANullArgument) {
    EXPECT_EQ(Call(kReserved, nullptr), 0);
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
}

TEST_F(EntryLifetime, BeforeInitialisingReadAndWriteSucceedAndDoNothing) {
    SetPath(folder / "a.orvo");
    const auto session = refhost::SessionNode::Make();
    EXPECT_EQ(Call(kRead, &session->Edit()), 0);
    EXPECT_EQ(Call(kWrite, &session->Query()), 0);
    EXPECT_TRUE(session->Reports().empty());
    EXPECT_FALSE(std::filesystem::exists(folder / "a.orvo"));
    Call(kReserved, nullptr);
}

TEST_F(EntryLifetime, AfterAFailedInitialiseReadAndWriteSucceedAndReportNothing) {
    FailToInitialize();
    SetPath(folder / "a.orvo");
    const auto session = refhost::SessionNode::Make();
    EXPECT_EQ(Call(kRead, &session->Edit()), 0);
    EXPECT_EQ(Call(kWrite, &session->Query()), 0);
    EXPECT_TRUE(session->Reports().empty());
    EXPECT_FALSE(std::filesystem::exists(folder / "a.orvo"));
    Call(kReserved, nullptr);
}

TEST_F(EntryLifetime, TheHostsFeatureForInstrumentTracksCountsFromTheNextInitialise) {
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

TEST_F(EntryLifetime, RegistersInTheOrderThatHostsExpect) {
    EXPECT_EQ(Initialize(), 0);
    EXPECT_THAT(registrar->Calls(),
                ElementsAre("version", "identity", "version", "open format", "save format"));
}

TEST_F(EntryLifetime, ARegistrarThatThrowsFailsTheCallAndTerminateStillTidiesUp) {
    Initialize();
    Call(kTerminate, nullptr);
    FailToInitialize();
    EXPECT_NE(kelui::PlugInResourceManager(), nullptr);
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(kelui::PlugInResourceManager(), nullptr);
}

TEST_F(EntryLifetime, TerminateBeforeInitialiseTouchesNothingOfTheProcess) {
    kelui::InstallPlugInResourceManager(std::make_unique<kelui::OS_ResourceManager>(nullptr));
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_NE(kelui::PlugInResourceManager(), nullptr);
    kelui::InstallPlugInResourceManager(nullptr);
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    Call(kReserved, nullptr);
}

TEST_F(EntryLifetime, AfterTerminateTheTraceSaysWhyNothingIsReadOrWritten) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    Call(kTerminate, nullptr);
    EXPECT_THAT(TracedBy([&] { Read(); }),
                ElementsAre("app::XMLReader: the plug-in was terminated: initialise it first"));
    EXPECT_THAT(TracedBy([&] { Write(); }),
                ElementsAre("app::XMLWriter: the plug-in was terminated: initialise it first"));
    Call(kReserved, nullptr);
}

TEST_F(EntryLifetime, AfterTerminateAFailedInitialiseLeavesReadsAndWritesFailing) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    Call(kTerminate, nullptr);
    FailToInitialize();
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    Call(kReserved, nullptr);
    EXPECT_EQ(Initialize(), 0);
    EXPECT_EQ(Read(), 0);
}

TEST_F(EntryLifetime, AFailedInitialiseLeavesAReadyPlugInReady) {
    Initialize();
    FailToInitialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Read(), 0);
    SetPath(folder.Write("b.orvo", "<score/>"));
    EXPECT_EQ(Read(), kReadFailed) << "the plug-in must still read";
}

TEST_F(EntryLifetime, AfterTerminateReadsAndWritesFail) {
    Initialize();
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(Read(), kReadFailed);
    EXPECT_EQ(Write(), kWriteFailed);
    Call(kReserved, nullptr);
    EXPECT_EQ(test::ReadFile(folder / "a.orvo"), "<orvo/>");
}

TEST_F(EntryLifetime, ASecondTerminateDoesNothing) {
    Initialize();
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(Call(kTerminate, nullptr), 0);
    EXPECT_EQ(Read(), kReadFailed);
}

TEST_F(EntryLifetime, InitialisingAgainAfterTerminateWorks) {
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Initialize(), 0);
        EXPECT_EQ(Read(), 0);
        EXPECT_EQ(Call(kTerminate, nullptr), 0);
    }
}

TEST_F(EntryLifetime, InitialisingTwiceWorks) {
    Initialize();
    EXPECT_EQ(Initialize(), 0);
    SetPath(folder.Write("a.orvo", "<orvo/>"));
    EXPECT_EQ(Read(), 0);
}

TEST_F(EntryLifetime, TheResourceManagerIsThePlugInsOwnAndGoesWithIt) {
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
