#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

#include "session/json/SessionJson.h"
#include "toolkit/GeneratedSession.h"

// Of a program of its own, because it counts what all of the program allocates.

namespace {

std::size_t heapUse = 0;
std::size_t heapPeak = 0;

}  // namespace

void* operator new(std::size_t size) {
    void* const block = std::malloc(std::max<std::size_t>(size, 1));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    heapUse += malloc_usable_size(block);
    heapPeak = std::max(heapPeak, heapUse);
    return block;
}

void operator delete(void* block) noexcept {
    heapUse -= malloc_usable_size(block);
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

namespace orvo::json {
namespace {

/// Several times smaller than the text of the session below.
constexpr std::size_t kMuchLess = std::size_t{512} * 1024;

orvo::Session LargeSession() {
    return toolkit::GenerateSession({.tracks = 64}, 1);
}

/// What is in use at most from its making on, beyond what is then.
class HeapPeak {
public:
    HeapPeak() : before_(heapUse) { heapPeak = heapUse; }

    std::size_t BeyondStart() const { return heapPeak - before_; }
    static std::size_t BeyondNow() { return heapPeak - heapUse; }

private:
    std::size_t before_;
};

TEST(StreamMemoryTest, WritingHoldsABlockOfTheText) {
    const orvo::Session session = LargeSession();
    std::size_t size = 0;
    const HeapPeak peak;
    ToJson(session, [&](std::string_view block) { size += block.size(); });
    EXPECT_GT(size, 4 * kMuchLess);
    EXPECT_LT(peak.BeyondStart(), kMuchLess);
}

TEST(StreamMemoryTest, ReadingHoldsTheSessionAndABlockOfTheText) {
    const std::string text = ToJson(LargeSession());
    const HeapPeak peak;
    const orvo::Session session = Parse(text);
    EXPECT_GT(text.size(), 4 * kMuchLess);
    EXPECT_LT(peak.BeyondNow(), kMuchLess);
    EXPECT_EQ(ToJson(session), text);
}

TEST(StreamMemoryTest, ReadingHoldsNoMoreAfterAWrongValue) {
    const std::string text = R"({"x": 1, "y": )" + ToJson(LargeSession()) + "}";
    const HeapPeak peak;
    EXPECT_THROW(Parse(text), JsonError);
    EXPECT_LT(peak.BeyondNow(), kMuchLess);
}

TEST(StreamMemoryTest, ReadingALongTextHoldsAFewTimesItsLength) {
    const std::string longText(1'000'000, 'x');
    const std::string text = ToJson({.xmpMetadata = longText});
    const HeapPeak peak;
    const orvo::Session session = Parse(text);
    EXPECT_EQ(session.xmpMetadata, longText);
    EXPECT_LT(peak.BeyondNow(), 4 * text.size());
}

}  // namespace
}  // namespace orvo::json
