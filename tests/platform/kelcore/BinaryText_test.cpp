#include "platform/kelcore/BinaryText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <new>
#include <numeric>
#include <optional>
#include <random>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/Base64.hpp>

#include "tests/platform/support/FailingAllocations.h"

namespace kelcore {
namespace {

using namespace std::string_view_literals;
using Bytes = std::vector<byte>;

std::string Encode(const Bytes& bytes) {
    return EncodeBinaryDataToUTF8String(bytes.data(), bytes.size());
}

Bytes Decode(std::string_view text) {
    Bytes bytes{1, 2, 3};
    EXPECT_TRUE(DecodeBinaryDataFromUTF8String(text, bytes)) << text;
    return bytes;
}

// This program never starts the XML library, so every test here shows that the codec does not need
// it.

TEST(BinaryText, EncodesAsBase64InLinesThatEndWithALineFeed) {
    EXPECT_EQ(Encode({'f'}), "Zg==\n");
    EXPECT_EQ(Encode({'f', 'o'}), "Zm8=\n");
    EXPECT_EQ(Encode({'f', 'o', 'o'}), "Zm9v\n");
    EXPECT_EQ(Encode({0xFB, 0xFF, 0xFE}), "+//+\n");
}

TEST(BinaryText, BreaksLinesAfter60Digits) {
    EXPECT_EQ(Encode(Bytes(45, 0)), std::string(60, 'A') + "\n");
    EXPECT_EQ(Encode(Bytes(46, 0)), std::string(60, 'A') + "\nAA==\n");
}

TEST(BinaryText, NoBytesAreAnEmptyText) {
    EXPECT_EQ(EncodeBinaryDataToUTF8String(nullptr, 0), "");
    EXPECT_EQ(Decode(""), Bytes());
    EXPECT_EQ(Decode(" \t\r\n"), Bytes());
}

TEST(BinaryText, EverySizeReadsBack) {
    for (std::size_t size = 0; size <= 300; ++size) {
        Bytes bytes(size);
        std::iota(bytes.begin(), bytes.end(), static_cast<byte>(size));
        ASSERT_EQ(Decode(Encode(bytes)), bytes) << size;
    }
}

RC_GTEST_PROP(BinaryText, EveryBlockReadsBack, (const Bytes& bytes)) {
    RC_ASSERT(Decode(Encode(bytes)) == bytes);
}

TEST(BinaryText, ALargeBlockReadsBack) {
    Bytes bytes(3'000'001);
    std::iota(bytes.begin(), bytes.end(), byte{0});
    EXPECT_EQ(Decode(Encode(bytes)), bytes);
}

TEST(BinaryText, IgnoresWhiteSpaceAnywhere) {
    const Bytes expected{'f', 'o', 'o', 'b'};
    EXPECT_EQ(Decode("Zm9vYg=="), expected);
    EXPECT_EQ(Decode(" \tZ m\r\n9\n\nv Y g = =\n "), expected);
}

/// Expects `work` to throw std::bad_alloc at each of its allocations, and to succeed in the end.
template <typename Work>
void ExpectBadAllocAtEveryAllocation(Work work) {
    for (std::size_t number = 0;; ++number) {
        bool threw = false;
        const test::FailingAllocation failure(number);
        try {
            work();
        } catch (const std::bad_alloc&) {
            threw = true;
        }
        ASSERT_EQ(threw, failure.Happened()) << "allocation " << number;
        if (!threw) {
            EXPECT_GT(number, 0U);
            return;
        }
    }
}

TEST(BinaryText, EncodingWithoutMemoryThrowsBadAlloc) {
    const Bytes bytes(1000, 'x');
    ExpectBadAllocAtEveryAllocation([&] { Encode(bytes); });
}

TEST(BinaryText, DecodingWithoutMemoryThrowsBadAlloc) {
    const std::string text = Encode(Bytes(1000, 'x'));
    ExpectBadAllocAtEveryAllocation([&] {
        Bytes bytes;
        DecodeBinaryDataFromUTF8String(text, bytes);
    });
}

TEST(BinaryText, DecodingIntoExistingCapacityAllocatesNothing) {
    const std::string text = Encode(Bytes(1000, 'x'));
    Bytes bytes(2000);
    const test::FailingAllocation failure(0);
    const bool decoded = DecodeBinaryDataFromUTF8String(text, bytes);
    const bool allocated = failure.Happened();
    EXPECT_TRUE(decoded);
    EXPECT_FALSE(allocated);
}

TEST(BinaryText, DecodesUTF16LikeUTF8) {
    Bytes bytes;
    EXPECT_TRUE(DecodeBinaryDataFromUTF16String(u" Zm9v\nYg==\n", bytes));
    EXPECT_EQ(bytes, (Bytes{'f', 'o', 'o', 'b'}));
    for (const auto text : {u"Zm9v\0"sv, u"Zm9\u0176"sv, u"Zm9"sv, u"\u2003Zm9v"sv}) {
        EXPECT_FALSE(DecodeBinaryDataFromUTF16String(text, bytes));
        EXPECT_TRUE(bytes.empty());
    }
}

/// Frees everything that the library's codec allocated, because the codec itself leaks.
class CodecMemory final : public xercesc::MemoryManager {
public:
    void* allocate(XMLSize_t size) override {
        return blocks_.emplace_back(std::make_unique<char[]>(size)).get();
    }
    void deallocate(void*) override {}
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

private:
    std::vector<std::unique_ptr<char[]>> blocks_;
};

std::optional<Bytes> DecodedByTheLibrary(const std::string& text) {
    CodecMemory memory;
    XMLSize_t length = 0;
    const XMLByte* const bytes =
        xercesc::Base64::decode(reinterpret_cast<const XMLByte*>(text.c_str()), &length, &memory,
                                xercesc::Base64::Conf_RFC2045);
    return bytes != nullptr ? std::optional(Bytes(bytes, bytes + length)) : std::nullopt;
}

std::optional<Bytes> DecodedByUs(const std::string& text) {
    Bytes bytes;
    return DecodeBinaryDataFromUTF8String(text, bytes) ? std::optional(bytes) : std::nullopt;
}

TEST(BinaryText, EndsATextWhereTheLibrarysCodecDoes) {
    constexpr std::string_view kCharacters = "AQgwZ/+=! \n";
    for (const std::string_view front : {"", "Zm9v", "Zm9v\n"}) {
        for (std::size_t number = 0; number < std::size_t{11} * 11 * 11 * 11; ++number) {
            std::string text(front);
            for (std::size_t rest = number, i = 0; i < 4; ++i, rest /= 11) {
                text += kCharacters[rest % 11];
            }
            if (text.find_first_not_of(" \n") != std::string::npos) {
                ASSERT_EQ(DecodedByUs(text), DecodedByTheLibrary(text)) << text;
            }
        }
    }
}

TEST(BinaryText, DecodesRandomChangesLikeTheLibrarysCodec) {
    constexpr std::string_view kCharacters = "AZaz09+/= \n\t\r-_.";
    std::mt19937 random(7);
    const std::string whole = Encode(Bytes(100, 0xA5));
    for (int round = 0; round < 20'000; ++round) {
        std::string text = whole.substr(0, random() % whole.size() + 1);
        for (auto changes = random() % 4; changes > 0; --changes) {
            const std::size_t place = random() % text.size();
            if (random() % 2 == 0) {
                text[place] = kCharacters[random() % kCharacters.size()];
            } else {
                text.insert(place, 1, kCharacters[random() % kCharacters.size()]);
            }
        }
        if (text.find_first_not_of(" \n\t\r") != std::string::npos) {
            ASSERT_EQ(DecodedByUs(text), DecodedByTheLibrary(text)) << text;
        }
    }
}

TEST(BinaryText, RefusesMalformedText) {
    const std::string_view wrong[] = {"Z",       "Zg",       "Zg=",     "Z===",    "====",
                                      "=Zg=",    "Zg==Zg==", "Zm9v!",   "Zm-_",    "Zm9v\0"sv,
                                      "Zm9\0"sv, "\0"sv,     "Zm9\x80", "Zm9\xFF", "Zm9\xC3\xA9",
                                      "Zm9v=",   "Zh==",     "Zm9="};
    for (const auto text : wrong) {
        Bytes bytes{1, 2, 3};
        EXPECT_FALSE(DecodeBinaryDataFromUTF8String(text, bytes)) << text;
        EXPECT_TRUE(bytes.empty()) << text;
    }
}

RC_GTEST_PROP(BinaryText, AnyTextIsReadOrRefused, (const std::string& text)) {
    Bytes bytes;
    if (!DecodeBinaryDataFromUTF8String(text, bytes)) {
        RC_ASSERT(bytes.empty());
    }
}

}  // namespace
}  // namespace kelcore
