#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <set>

#include "tests/docs/FormatPage.h"
#include "tests/docs/WrittenDocuments.h"
#include "tests/docs/XmlElement.h"
#include "tests/support/SerializerFixture.h"
#include "tests/support/SourceFolder.h"

// What docs/format.md says of writing, seen in what is written: of the golden session, and of many
// that hold anything.

namespace tses {
namespace {

using orvo::Session;
using test::FormatPage;
using test::PageAttribute;
using test::PageSection;
using test::XmlElement;
using testing::ContainerEq;
using Place = std::pair<std::string, std::string>;

struct Element {
    const PageSection* section = nullptr;
    XmlElement xml;
};

bool IsCondition(const std::string& written) {
    return written.starts_with("if ");
}

bool IsCondition(const PageAttribute& attribute) {
    return IsCondition(attribute.written);
}

template <class Number>
bool IsNumber(const std::string& text) {
    Number number{};
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && stop == text.data() + text.size();
}

bool IsWordList(std::string text, const std::vector<std::string>& words) {
    for (std::size_t space = text.find(' '); space != std::string::npos; space = text.find(' ')) {
        if (std::ranges::count(words, text.substr(0, space)) == 0) {
            return false;
        }
        text.erase(0, space + 1);
    }
    return text.empty();
}

bool Fits(const std::string& text, const PageAttribute& attribute) {
    const std::string& type = attribute.type;
    if (type == "u32") {
        return IsNumber<std::uint32_t>(text);
    }
    if (type == "i32") {
        return IsNumber<std::int32_t>(text);
    }
    if (type == "i64") {
        return IsNumber<std::int64_t>(text);
    }
    if (type == "real" || type == "real32" || type == "exact real32") {
        return IsNumber<double>(text);
    }
    if (type.starts_with("boolean")) {
        return text == "true" || text == "false";
    }
    if (type.starts_with("list of ")) {
        return IsWordList(text, attribute.Keywords());
    }
    const std::vector<std::string> keywords = attribute.Keywords();
    return keywords.empty() || std::ranges::count(keywords, text) == 1;
}

class FormatWriting : public test::SerializerFixture {
protected:
    XmlElement Written(const Session& session) {
        const auto outcome = Write(session);
        EXPECT_TRUE(outcome.ok);
        return test::ParseXml(outcome.file.value_or("<none/>"));
    }

    void AddDocument(const XmlElement& root) { Visit(root, page.Root()); }

    void AddGolden() {
        AddDocument(
            test::ParseXml(test::ReadFile(test::SourceFolder() / "tests/golden/everything.orvo")));
    }

    void AddGoldenAndAnySessions() {
        AddGolden();
        for (const Session& session : test::AnySessions()) {
            AddDocument(Written(session));
        }
    }

    void AddGoldenAndStoredSessions() {
        AddGolden();
        for (const Session& session : test::StoredSessions()) {
            AddDocument(Written(session));
        }
    }

    const FormatPage page;
    std::vector<Element> elements;  // of all documents, where the page puts them
    std::set<Place> elsewhere;      // of all other elements: parent and name

private:
    void Visit(const XmlElement& element, const PageSection& section) {
        elements.push_back({&section, element});
        for (const XmlElement& child : element.children) {
            if (const PageSection* const found = page.Child(section, child.name)) {
                Visit(child, *found);
            } else {
                elsewhere.emplace(element.name, child.name);
            }
        }
    }
};

TEST_F(FormatWriting, EveryElementStandsWhereThePagePutsItOrIsListedAsWrittenInVain) {
    AddGoldenAndAnySessions();
    const auto& listed = page.WrittenInVain();
    EXPECT_THAT(elsewhere, ContainerEq(std::set<Place>(listed.begin(), listed.end())));
}

TEST_F(FormatWriting, WhatComesBackFromAFileIsWrittenWhereThePagePutsItAlone) {
    AddGoldenAndStoredSessions();
    EXPECT_THAT(elsewhere, ContainerEq(std::set<Place>()));
}

TEST_F(FormatWriting, EveryElementOfThePageIsWrittenUnlessItSaysNever) {
    AddGoldenAndAnySessions();
    std::set<std::string> written;
    for (const Element& element : elements) {
        written.insert(element.section->anchor);
    }
    std::set<std::string> stated;
    for (const PageSection& section : page.Sections()) {
        EXPECT_TRUE(section.written == "always" || section.written == "never" ||
                    section.written.starts_with("for each ") || IsCondition(section.written))
            << section.anchor << ": " << section.written;
        if (section.written != "never") {
            stated.insert(section.anchor);
        }
    }
    EXPECT_THAT(written, ContainerEq(stated));
}

TEST_F(FormatWriting, AnElementIsThereAsOftenAsThePageSays) {
    AddGoldenAndAnySessions();
    std::set<std::string> leftOut;
    for (const Element& element : elements) {
        for (const std::string& anchor : element.section->children) {
            const PageSection& child = page.Section(anchor);
            for (const std::string& name : child.names) {
                const auto count =
                    std::ranges::count(element.xml.children, name, &XmlElement::name);
                if (child.written == "always") {
                    EXPECT_EQ(count, 1) << name << " in " << ToXml(element.xml);
                } else if (IsCondition(child.written)) {
                    EXPECT_LE(count, 1) << name << " in " << ToXml(element.xml);
                }
                if (count == 0) {
                    leftOut.insert(anchor);
                }
            }
        }
    }
    for (const PageSection& section : page.Sections()) {
        EXPECT_TRUE(!IsCondition(section.written) || leftOut.contains(section.anchor))
            << section.anchor << " is always written";
    }
}

TEST_F(FormatWriting, ChildrenStandInTheOrderInWhichThePageListsThem) {
    AddGoldenAndAnySessions();
    for (const Element& element : elements) {
        if (element.section->anchor == "tracks") {
            continue;  // whose order is the host's
        }
        std::size_t before = 0;
        for (const XmlElement& child : element.xml.children) {
            const PageSection* const section = page.Child(*element.section, child.name);
            if (section != nullptr) {
                const auto& order = element.section->children;
                const auto at = static_cast<std::size_t>(std::ranges::find(order, section->anchor) -
                                                         order.begin());
                EXPECT_GE(at, before) << child.name << " in " << ToXml(element.xml);
                before = at;
            }
        }
    }
}

TEST_F(FormatWriting, VideoTracksComeFirst) {
    AddGoldenAndAnySessions();
    for (const Element& element : elements) {
        if (element.section->anchor == "tracks") {
            EXPECT_TRUE(std::ranges::is_partitioned(
                element.xml.children,
                [](const XmlElement& track) { return track.name == "videoTrack"; }));
        }
    }
}

TEST_F(FormatWriting, EveryAttributeIsWrittenWhenThePageSaysSo) {
    AddGoldenAndAnySessions();
    std::set<std::string> there;
    std::set<std::string> leftOut;
    for (const Element& element : elements) {
        for (const auto& [name, value] : element.xml.attributes) {
            there.insert(element.section->anchor + " " + name);
        }
        for (const PageAttribute& attribute : element.section->attributes) {
            if (!element.xml.attributes.contains(attribute.name)) {
                leftOut.insert(element.section->anchor + " " + attribute.name);
            }
        }
    }
    std::set<std::string> statedThere;
    std::set<std::string> statedLeftOut;
    for (const PageSection& section : page.Sections()) {
        for (const PageAttribute& attribute : section.attributes) {
            EXPECT_TRUE(attribute.written == "always" || attribute.written == "never" ||
                        IsCondition(attribute))
                << section.anchor << " " << attribute.name << ": " << attribute.written;
            const std::string key = section.anchor + " " + attribute.name;
            if (section.written != "never" && attribute.written != "never") {
                statedThere.insert(key);
            }
            if (section.written != "never" && attribute.written != "always") {
                statedLeftOut.insert(key);
            }
        }
    }
    EXPECT_THAT(there, ContainerEq(statedThere));
    EXPECT_THAT(leftOut, ContainerEq(statedLeftOut));
}

TEST_F(FormatWriting, AValueIsOneOfTheStatedType) {
    AddGoldenAndStoredSessions();
    for (const Element& element : elements) {
        for (const auto& [name, value] : element.xml.attributes) {
            const PageAttribute* const attribute = element.section->FindAttribute(name);
            ASSERT_NE(attribute, nullptr) << element.section->anchor << " " << name;
            EXPECT_TRUE(Fits(value, *attribute))
                << element.section->anchor << " " << name << "=" << value;
            if (attribute->written == "if true" || attribute->written == "if not empty") {
                EXPECT_NE(value, attribute->written == "if true" ? "false" : "") << name;
            }
        }
    }
}

TEST_F(FormatWriting, ATextIsWrittenWhereThePageHasOneAlone) {
    AddGoldenAndAnySessions();
    std::set<std::string> withText;
    for (const Element& element : elements) {
        const bool hasText = element.xml.text.find_first_not_of(" \n") != std::string::npos;
        if (hasText) {
            withText.insert(element.section->anchor);
        }
    }
    std::set<std::string> stated;
    for (const PageSection& section : page.Sections()) {
        if (section.text != "none" && section.written != "never") {
            stated.insert(section.anchor);
        }
    }
    EXPECT_THAT(withText, ContainerEq(stated));
}

}  // namespace
}  // namespace tses
