#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <string>
#include <string_view>

#include "platform/kelcore/File.h"
#include "tests/platform/support/FileFolder.h"

namespace kelcore {

inline void Replace(const std::u16string& path, std::string_view content) {
    File file(path);
    file.Create();
    OPlatformByteStream stream(file);
    stream.WriteBlock(content.data(), content.size());
    stream.Close();
}

/// The message of the error that `Create` throws; empty if it succeeds.
inline std::string Refusal(const std::u16string& path) {
    try {
        File file(path);
        file.Create();
        return {};
    } catch (const file_exception& error) {
        return error.what();
    }
}

inline mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

inline bool SetAttribute(const std::string& path, const char* name, std::string_view value) {
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

/// A folder for one session file.
class ReplacementTest : public testing::Test {
protected:
    ReplacementTest() : target_(folder_.Path16(kName)), bytes_(folder_.Bytes(kName)) {}

    void MakeOld(mode_t mode = 0644) {
        test::WriteFile(bytes_, "old");
        ASSERT_EQ(chmod(bytes_.c_str(), mode), 0);
    }

    static constexpr const char* kName = "song.orvo";
    test::FileFolder folder_;
    std::u16string target_;
    std::string bytes_;
};

}  // namespace kelcore
