#include "tests/session/json/JsonErrors.h"

#include <gtest/gtest.h>

#include "session/json/JsonReader.h"

namespace orvo::test {
namespace {

std::optional<json::JsonError> FailureOf(const TextSource& source) {
    try {
        json::Parse(source);
    } catch (const json::JsonError& error) {
        return error;
    }
    return {};
}

}  // namespace

TextSource ByteByByte(std::string_view text) {
    return [text]() mutable {
        const std::string_view block = text.substr(0, 1);
        text.remove_prefix(block.size());
        return block;
    };
}

std::string ErrorOf(std::string_view text) {
    const auto failure = FailureOf(json::WholeText(text));
    const auto byByte = FailureOf(ByteByByte(text));
    EXPECT_EQ(failure.has_value(), byByte.has_value());
    if (!failure || !byByte) {
        return {};
    }
    EXPECT_STREQ(failure->what(), byByte->what());
    return failure->what();
}

std::optional<json::TextPlace> PlaceOfError(std::string_view text) {
    const auto failure = FailureOf(json::WholeText(text));
    const auto byByte = FailureOf(ByteByByte(text));
    if (!failure || !byByte) {
        ADD_FAILURE() << "no error: " << text;
        return {};
    }
    EXPECT_EQ(failure->Place(), byByte->Place());
    return failure->Place();
}

}  // namespace orvo::test
