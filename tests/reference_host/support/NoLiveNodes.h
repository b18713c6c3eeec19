#pragma once

#include <gtest/gtest.h>

#include "reference_host/LiveNodes.h"

namespace refhost::test {

/// The fixture of tests that make nodes: each must leave none.
class NoLiveNodes : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(LiveNodes(), 0U); }
};

}  // namespace refhost::test
