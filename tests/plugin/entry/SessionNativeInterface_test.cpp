#include "plugin/entry/SessionNativeInterface.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <xercesc/util/PlatformUtils.hpp>

#include "plugin/xml/XercesPlatform.h"
#include "reference_host/CountedObject.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Ref.h"
#include "reference_host/SessionNode.h"

// What a host can neither cause nor see from outside the library: no memory for the serializer, a
// second host service, the state of the XML library, and the memory that is left.

namespace {

bool outOfMemory = false;
std::size_t liveBlocks = 0;

void* Allocate(std::size_t size) noexcept {
    void* const memory = outOfMemory ? nullptr : std::malloc(size);
    liveBlocks += memory != nullptr ? 1 : 0;
    return memory;
}

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    liveBlocks -= memory != nullptr ? 1 : 0;
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}

namespace tses {
namespace {

using refhost::Ref;

/// Ignores everything that is registered.
class QuietRegistrar : public refhost::CountedObject<IPlugInRegistrar> {
public:
    void UnusedSlot3() override {}
    void DeclareInterfaceVersion(kelcore::int32 /*a*/, kelcore::int32 /*b*/) override {}
    void UnusedSlot5() override {}
    void SetPlugInIdentity(const char* /*guid*/, const kelcore::char16* /*displayName*/) override {}
    void RegisterOpenFormat(const kelcore::char16* /*formatName*/,
                            const kelcore::char16* const* /*extensions*/,
                            kelcore::int32 /*extensionCount*/) override {}
    void RegisterSaveFormat(const kelcore::char16* /*formatName*/,
                            const kelcore::char16* const* /*extensions*/,
                            kelcore::int32 /*extensionCount*/) override {}
};

/// Uses up the memory at the last registration, before the serializer is made.
class ExhaustingRegistrar final : public QuietRegistrar {
public:
    void RegisterSaveFormat(const kelcore::char16* /*formatName*/,
                            const kelcore::char16* const* /*extensions*/,
                            kelcore::int32 /*extensionCount*/) override {
        outOfMemory = true;
    }
};

/// Notes whether the XML library runs when the first format is registered.
class NotingRegistrar final : public QuietRegistrar {
public:
    void RegisterOpenFormat(const kelcore::char16* /*formatName*/,
                            const kelcore::char16* const* /*extensions*/,
                            kelcore::int32 /*extensionCount*/) override {
        xmlLibraryRuns = IsXercesStarted();
    }

    bool xmlLibraryRuns = false;
};

class Service final : public refhost::CountedObject<IHostObject> {};

/// Breaks the one promise that a host must keep: not to throw from Release.
class ThrowingService final : public IHostObject {
public:
    void AddReference() override {}
    void Release() override { throw 42; }
};

TEST(SessionNativeInterface, WithoutMemoryForTheSerializerReadsAndWritesSucceedAndDoNothing) {
    const auto registrar = Ref<ExhaustingRegistrar>::Adopt(new ExhaustingRegistrar);
    SessionNativeInterface plugIn;
    const SessionResult initialised = plugIn.Initialize(registrar.Get());
    outOfMemory = false;
    EXPECT_EQ(initialised, SessionResult::Ok);
    const auto session = refhost::SessionNode::Make();
    EXPECT_EQ(plugIn.ReadSession(&session->Edit()), SessionResult::Ok);
    EXPECT_EQ(plugIn.WriteSession(&session->Query()), SessionResult::Ok);
    EXPECT_TRUE(session->Reports().empty());
    plugIn.Terminate();
    EXPECT_EQ(plugIn.WriteSession(&session->Query()), SessionResult::WriteFailed);
}

TEST(SessionNativeInterface, InitializeStartsTheXmlLibraryBeforeItRegistersTheFormats) {
    const auto registrar = Ref<NotingRegistrar>::Adopt(new NotingRegistrar);
    ASSERT_FALSE(IsXercesStarted());
    SessionNativeInterface plugIn;
    plugIn.Initialize(registrar.Get());
    EXPECT_TRUE(registrar->xmlLibraryRuns);
    plugIn.Terminate();
}

TEST(SessionNativeInterface, TerminateStopsTheXmlLibraryAndKeepsNoMemory) {
    const auto registrar = Ref<QuietRegistrar>::Adopt(new QuietRegistrar);
    // Allocates what stays until the end of the process.
    SessionNativeInterface first;
    first.Initialize(registrar.Get());
    first.Terminate();
    const std::size_t before = liveBlocks;
    SessionNativeInterface plugIn;
    plugIn.Initialize(registrar.Get());
    EXPECT_TRUE(IsXercesStarted());
    EXPECT_GT(liveBlocks, before);
    plugIn.Terminate();
    EXPECT_EQ(liveBlocks, before);
    EXPECT_FALSE(IsXercesStarted());
    EXPECT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
}

TEST(SessionNativeInterface, TerminateReleasesTheSecondHostService) {
    const auto registrar = Ref<ExhaustingRegistrar>::Adopt(new ExhaustingRegistrar);
    const std::size_t before = refhost::LiveNodes();
    ModuleHostService() = Adopt<IHostObject>(new Service);
    SessionNativeInterface plugIn;
    plugIn.Initialize(registrar.Get());
    outOfMemory = false;
    EXPECT_EQ(refhost::LiveNodes(), before + 1);
    plugIn.Terminate();
    EXPECT_EQ(refhost::LiveNodes(), before);
}

TEST(SessionNativeInterfaceDeathTest, AThrowOutOfReleaseEndsTheProcess) {
    ThrowingService service;
    EXPECT_DEATH(Adopt<IHostObject>(&service).Reset(), "");
}

TEST(SessionInterfaceBase, DoesNothingAndImplementsNoFile) {
    class Plain final : public SessionInterface {
    } plain;
    EXPECT_EQ(plain.Initialize(nullptr), SessionResult::Ok);
    EXPECT_EQ(plain.Reserved(), SessionResult::Ok);
    EXPECT_EQ(plain.Terminate(), SessionResult::Ok);
    EXPECT_EQ(plain.SetFilePath(nullptr), SessionResult::NotImplemented);
    EXPECT_EQ(plain.ReadSession(nullptr), SessionResult::NotImplemented);
    EXPECT_EQ(plain.WriteSession(nullptr), SessionResult::NotImplemented);
}

}  // namespace
}  // namespace tses
