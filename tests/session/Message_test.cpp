#include <orvo/Message.h>

#include <gtest/gtest.h>

#include <sstream>

namespace orvo {
namespace {

std::string Printed(const Message& message) {
    std::ostringstream text;
    text << message;
    return text.str();
}

TEST(MessageTest, PrintsEachPartThatItHas) {
    EXPECT_EQ(Printed({.file = "a.orvo", .line = 2, .column = 7, .what = "bad", .advice = "mend"}),
              "a.orvo:2:7: bad; mend");
    EXPECT_EQ(Printed({.file = "a.orvo", .what = "bad"}), "a.orvo: bad");
    EXPECT_EQ(Printed({.what = "bad", .advice = "mend"}), "bad; mend");
    EXPECT_EQ(Printed({.line = 2, .column = 7, .what = "bad"}), "2:7: bad");
}

}  // namespace
}  // namespace orvo
