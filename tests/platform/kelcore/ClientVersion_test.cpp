#include "platform/kelcore/ClientVersion.h"

#include <gtest/gtest.h>

namespace kelcore {
namespace {

TEST(ClientVersion, DefaultsToTheVersionOfTheLibrary) {
    const std::string before = GetClientVersion();
    EXPECT_EQ(before, ORVO_EXPECTED_VERSION);
    EXPECT_EQ(GetClientBuildNumber(), 0U);

    SetClientVersion("25.1", 4294967295U);
    EXPECT_EQ(GetClientVersion(), "25.1");
    EXPECT_EQ(GetClientBuildNumber(), 4294967295U);

    SetClientVersion(before, 0);
}

}  // namespace
}  // namespace kelcore
