#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/kelcore/Strings.h"
#include "tests/docs/FormatPage.h"
#include "toolkit/SessionContent.h"

// What a conversion takes for carried, held to docs/format.md: every element that comes back when a
// session is saved, every attribute of it, and what its value must be.

namespace {

using test::FormatPage;
using test::PageAttribute;
using test::PageSection;
using toolkit::CarriedAttribute;
using toolkit::CarriedElement;
using toolkit::FindCarriedElement;
using toolkit::TextKind;
using toolkit::ValueKind;

const std::map<std::string, ValueKind> kKinds = {
    {"text", ValueKind::Text},
    {"u32", ValueKind::Number},
    {"i32", ValueKind::Number},
    {"i64", ValueKind::LongNumber},
    {"real", ValueKind::Real},
    {"real32", ValueKind::Real32},
    {"exact real32", ValueKind::ExactReal32},
    {"boolean", ValueKind::Boolean},
    {"boolean or 1", ValueKind::BooleanOr1},
    {"media handler", ValueKind::HandlerName},
};

ValueKind KindOf(const PageAttribute& attribute) {
    if (attribute.Keywords().empty()) {
        return kKinds.at(attribute.type);
    }
    if (attribute.type.starts_with("list of ")) {
        return ValueKind::Keywords;
    }
    return attribute.type.ends_with(", or u32") ? ValueKind::KeywordOrNumber : ValueKind::Keyword;
}

std::vector<std::string> WordsOf(const CarriedAttribute& attribute) {
    std::vector<std::string> words;
    for (const std::u16string_view word : attribute.words) {
        words.push_back(kelcore::UTF16to8(word));
    }
    return words;
}

std::u16string Name(const std::string& text) {
    return kelcore::UTF8to16(text);
}

void ExpectSameAttributes(const PageSection& section, const CarriedElement& row) {
    for (const PageAttribute& attribute : section.attributes) {
        SCOPED_TRACE(attribute.name);
        const CarriedAttribute* const carried = FindCarriedAttribute(row, Name(attribute.name));
        if (carried == nullptr) {
            EXPECT_TRUE(!attribute.IsRead() || attribute.written == "never");
            continue;
        }
        EXPECT_EQ(carried->kind, KindOf(attribute));
        EXPECT_EQ(WordsOf(*carried), attribute.Keywords());
        EXPECT_NE(attribute.read, "dropped");
    }
    for (const CarriedAttribute& carried : row.attributes) {
        EXPECT_NE(section.FindAttribute(kelcore::UTF16to8(carried.name)), nullptr);
    }
}

void ExpectSameText(const PageSection& section, const CarriedElement& row) {
    const bool isBytes = section.text.starts_with("bytes in Base64");
    const TextKind kind = section.text == "none" ? TextKind::None
                          : isBytes              ? TextKind::Base64
                                                 : TextKind::Plain;
    EXPECT_EQ(row.text, kind);
}

void ExpectSame(const FormatPage& page, const PageSection& section, const CarriedElement& row) {
    SCOPED_TRACE(section.anchor);
    ExpectSameAttributes(section, row);
    ExpectSameText(section, row);
    for (const auto& [parent, name] : page.Tree()) {
        const PageSection* const child = page.Child(section, name);
        if (child == nullptr) {
            EXPECT_EQ(FindCarriedElement(Name(name), row.scope), nullptr) << name;
            continue;
        }
        const CarriedElement* const carried = FindCarriedElement(Name(name), row.scope);
        if (carried != nullptr) {
            ExpectSame(page, *child, *carried);
        } else {
            EXPECT_TRUE(child->text == "dropped" || child->written == "never") << name;
        }
    }
}

TEST(CarriedContent, IsWhatTheFormatReadsAndWrites) {
    const FormatPage page;
    ExpectSame(page, page.Root(), *FindCarriedElement(toolkit::kRootElement, u""));
}

}  // namespace
