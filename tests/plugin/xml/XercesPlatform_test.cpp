#include "plugin/xml/XercesPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

namespace tses {
namespace {

/// Memory that the library does not free when it stops.
class LastingMemory final : public xercesc::MemoryManager {
public:
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
    void* allocate(XMLSize_t size) override { return ::operator new(size); }
    void deallocate(void* memory) override { ::operator delete(memory); }
};

/// Throws at every request.
class FailingMemory final : public xercesc::MemoryManager {
public:
    explicit FailingMemory(std::exception_ptr failure) : failure_(std::move(failure)) {}
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
    void* allocate(XMLSize_t /*size*/) override { std::rethrow_exception(failure_); }
    void deallocate(void* /*memory*/) override {}

private:
    std::exception_ptr failure_;
};

std::exception_ptr LibraryException(xercesc::MemoryManager& memory) {
    try {
        ThrowXMLwithMemMgr(xercesc::XMLPlatformUtilsException,
                           xercesc::XMLExcepts::File_CouldNotReadFromFile, &memory);
    } catch (...) {
        return std::current_exception();
    }
}

/// Ends the process, with 0 if the library did not start.
[[noreturn]] void FailToStart() {
    StartXerces();
    static LastingMemory lasting;
    static FailingMemory failing(LibraryException(lasting));
    StopXerces();
    xercesc::XMLPlatformUtils::fgMemoryManager = &failing;
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    const bool started = StartXerces() || IsXercesStarted();
    std::fflush(stdout);
    ::_exit(started ? 1 : 0);
}

TEST(XercesPlatformDeathTest, AFailedStartDoesNotCountAndIsPrintedWithTheLibrarysMessage) {
    EXPECT_EXIT(FailToStart(), testing::ExitedWithCode(0),
                testing::StrEq("Error during initialization of Xerces XML parser! :\n"
                               "Exception message is: \n"
                               "unable to read data from file\n"));
}

TEST(XercesPlatform, StoppingWithoutAStartChangesNothing) {
    StopXerces();
    EXPECT_FALSE(IsXercesStarted());
    EXPECT_TRUE(StartXerces());
    EXPECT_TRUE(IsXercesStarted());
    StopXerces();
    EXPECT_FALSE(IsXercesStarted());
}

TEST(XercesPlatform, AMissingMessageIsAnEmptyText) {
    EXPECT_EQ(TranscodeMessage(nullptr), "");
    EXPECT_EQ(TranscodeMessage(u"\u00E4"), "\xC3\xA4");
}

}  // namespace
}  // namespace tses
