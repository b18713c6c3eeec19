#include "cli/terminal/Stream.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>
#include <thread>

using cli::Direction;

namespace {

/// A non-blocking pipe, as some programs pass it to their children.
class ImpatientPipe : public testing::Test {
protected:
    ImpatientPipe() { EXPECT_EQ(::pipe2(ends_.data(), O_NONBLOCK | O_CLOEXEC), 0); }
    ~ImpatientPipe() override {
        CloseWriteEnd();
        ::close(ends_[0]);
    }

    void CloseWriteEnd() {
        if (ends_[1] >= 0) {
            ::close(ends_[1]);
            ends_[1] = -1;
        }
    }

    std::string ReadAll() {
        std::string content;
        const auto take = [&](std::string_view block) { content += block; };
        EXPECT_FALSE(cli::ReadBlocks({ends_[0], "pipe"}, take));
        return content;
    }

    static void LetTimePass() { std::this_thread::sleep_for(std::chrono::milliseconds(30)); }

    std::array<int, 2> ends_ = {-1, -1};
};

TEST_F(ImpatientPipe, IsReadToItsEnd) {
    std::thread writer([this] {
        for (const char* const part : {"one ", "two"}) {
            LetTimePass();
            EXPECT_GT(::write(ends_[1], part, std::string_view(part).size()), 0);
        }
        LetTimePass();
        CloseWriteEnd();
    });
    const std::string content = ReadAll();
    writer.join();
    EXPECT_EQ(content, "one two");
}

TEST_F(ImpatientPipe, AcceptsMoreThanItsCapacity) {
    const std::string content(1'000'000, 'x');
    std::thread writer([&] {
        cli::WriteBlock({ends_[1], "pipe"}, content);
        CloseWriteEnd();
    });
    LetTimePass();
    const std::string read = ReadAll();
    writer.join();
    EXPECT_EQ(read, content);
}

TEST(FindStream, ADashIsTheStandardStreamOfItsDirection) {
    EXPECT_EQ(cli::FindStream("-", Direction::In)->descriptor, STDIN_FILENO);
    EXPECT_EQ(cli::FindStream("-", Direction::In)->name, "standard input");
    EXPECT_EQ(cli::FindStream("-", Direction::Out)->descriptor, STDOUT_FILENO);
    EXPECT_EQ(cli::FindStream("-", Direction::Out)->name, "standard output");
}

TEST(FindStream, AMereLookalikeOfADescriptorIsAFile) {
    for (const char* const name :
         {"", "a.orvo", "/", "/dev/null", "/dev/fd", "/dev/fd/", "/dev/fd/x", "/dev/fd/1x",
          "/dev/fd/-1", "/dev/fd/99999999999", "/proc/self/fdinfo/1", "/nowhere/fd/1", "fd/1"}) {
        EXPECT_FALSE(cli::FindStream(name, Direction::Out)) << name;
    }
}

TEST(FindStream, AStreamKeepsItsName) {
    EXPECT_EQ(cli::FindStream("/dev/fd/7", Direction::In)->name, "/dev/fd/7");
    EXPECT_EQ(cli::FindStream("/dev/fd/7", Direction::In)->descriptor, 7);
}

}  // namespace
