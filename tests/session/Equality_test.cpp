#include <gtest/gtest.h>

#include "tests/session/Filled.h"

// The comparisons of the model decide whether a session came back as it was, so none may leave out
// a member.

namespace orvo {
namespace {

template <class Value>
void ExpectEveryMemberCompared(const Value&) {}

template <class Held>
void ExpectEveryMemberCompared(const std::vector<Held>&);
template <class Held>
void ExpectEveryMemberCompared(const std::optional<Held>&);
template <class Held>
void ExpectEveryMemberCompared(const std::map<std::uint32_t, Held>&);

template <class Struct>
requires requires {
    Schema<Struct>::kRows;
}
void ExpectEveryMemberCompared(const Struct&) {
    const auto filled = test::Filler().Make<Struct>();
    EXPECT_TRUE(filled == Struct(filled));
    const auto check = [&filled](const auto& row) {
        Struct changed;
        changed.*row.member = filled.*row.member;
        EXPECT_FALSE(changed == Struct()) << Schema<Struct>::kName << '.' << row.key;
        ExpectEveryMemberCompared(filled.*row.member);
    };
    ForEachRow<Struct>(check);
}

template <class Held>
void ExpectEveryMemberCompared(const std::vector<Held>&) {
    ExpectEveryMemberCompared(Held());
}

template <class Held>
void ExpectEveryMemberCompared(const std::optional<Held>&) {
    ExpectEveryMemberCompared(Held());
}

template <class Held>
void ExpectEveryMemberCompared(const std::map<std::uint32_t, Held>&) {
    ExpectEveryMemberCompared(Held());
}

TEST(ModelEqualityTest, SessionsThatDifferInAnyMemberAreNotEqual) {
    ExpectEveryMemberCompared(orvo::Session());
}

}  // namespace
}  // namespace orvo
