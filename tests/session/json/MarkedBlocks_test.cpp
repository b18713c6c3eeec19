#include "session/json/MarkedBlocks.h"

#include <gtest/gtest.h>

#include <string>

namespace orvo::json {
namespace {

std::string Marked(std::string_view json) {
    MarkedBlocks blocks;
    return std::string(blocks.Make(json, true).text);
}

/// Made of pieces of that size.
std::string MarkedInPieces(std::string_view json, std::size_t size) {
    MarkedBlocks blocks;
    std::string marked;
    std::string rest;
    while (!json.empty() || !rest.empty()) {
        rest += json.substr(0, size);
        json.remove_prefix(std::min(size, json.size()));
        const MarkedBlocks::Block block = blocks.Make(rest, json.empty());
        marked += block.text;
        rest.erase(0, block.origin);
    }
    return marked;
}

std::string WithoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

TEST(MarkedBlocksTest, BlanksBeforeATextOrNumberAreLeftOut) {
    EXPECT_EQ(Marked("{ \t\r\n \"a\"  :  [ 1 ,\n -2 , { \"b  c\" : 3"),
              "{\"a\" :[1 ,-2 ,{\"b  c\" :3");
}

TEST(MarkedBlocksTest, BlanksBeforeOtherThingsStay) {
    for (const char* const json : {"[ \n true", "[ \n ]", "1 \n ", " {  }  ", "[ \n x"}) {
        EXPECT_EQ(Marked(json), json);
    }
}

TEST(MarkedBlocksTest, TextsAreTheSameWhereverAPieceEnds) {
    const std::string json =
        R"(["\ud800", "\ud83c\udfb5", "\ud83c\ud83c\udfb5", "\"\\", "\ufdd0","a\\"])"
        "[\"\uFDD0\uFDD1\u00e9\"]";
    for (std::size_t size = 1; size < json.size(); ++size) {
        EXPECT_EQ(WithoutBlanks(MarkedInPieces(json, size)), WithoutBlanks(Marked(json))) << size;
    }
}

TEST(MarkedBlocksTest, EveryCharacterIsFoundAgainInTheDocument) {
    const std::string json = "[  \"\\ud800\uFDD0\\ufdd0\uFDD0\uFDD0x\" ,  \n 7, y";
    MarkedBlocks blocks;
    const std::string marked(blocks.Make(json, true).text);
    for (const char character : {'x', '7', 'y', '['}) {
        EXPECT_EQ(blocks.OriginOf(json, marked.find(character)), json.find(character)) << character;
    }
    EXPECT_EQ(blocks.OriginOf(json, marked.size()), json.size());
    EXPECT_EQ(blocks.OriginOf(json, marked.size() + 1), json.size());
}

TEST(MarkedBlocksTest, WhatMayContinueIsLeftForTheNextBlock) {
    MarkedBlocks blocks;
    EXPECT_EQ(blocks.Make("\"a\\ud8", false).origin, 2U);
    const std::string_view next = "\\ud800\" 1";
    EXPECT_EQ(blocks.Make(next, true).text,
              "\uFDD0"
              "000\" 1");
    EXPECT_EQ(blocks.OriginOf(next, 7), 7U) << "a block that begins inside a text";
}

}  // namespace
}  // namespace orvo::json
