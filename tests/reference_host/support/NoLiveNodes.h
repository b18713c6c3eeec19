#pragma once

#include <gtest/gtest.h>

#include "reference_host/LiveNodes.h"

namespace refhost::test {

/// The base of tests that make nodes: none may be left at the end.
class NoLiveNodes : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(LiveNodes(), 0U); }
};

}  // namespace refhost::test
