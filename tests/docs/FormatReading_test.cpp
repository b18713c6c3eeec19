#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>

#include "format/Limits.h"
#include "format/Names.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/SessionNode.h"
#include "reference_host/recorder/CallJson.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/docs/FormatPage.h"
#include "tests/docs/GoldenElements.h"
#include "tests/support/SerializerFixture.h"
#include "tests/support/SourceFolder.h"

// What docs/format.md says of reading, found out by what the host hears: of every attribute in
// every element, whether it matters, what its absence means, and what its type takes.

namespace tses {
namespace {

using test::FormatPage;
using test::GoldenElement;
using test::PageAttribute;
using test::PageSection;
using testing::ContainerEq;
using testing::HasSubstr;
using Attributes = std::map<std::string, std::string>;

/// Some elements do something as soon as they have any attribute, so that one is always there.
constexpr const char* kMeaningless = "x-none";

const std::vector<std::string> kProbes = {"1",  "true", "false", "-3.5",
                                          "77", "",     "zzz",   "Ogg Vorbis"};

const std::set<std::string> kIntegerTypes = {"u32", "i32", "i64"};
const std::set<std::string> kOtherTypes = {"real",         "real32", "exact real32", "boolean",
                                           "boolean or 1", "text",   "media handler"};

Attributes With(Attributes attributes, const std::string& name, const std::string& value) {
    attributes[name] = value;
    return attributes;
}

Attributes Without(Attributes attributes, const std::string& name) {
    attributes.erase(name);
    return attributes;
}

/// The text that the page states as the default; none where it states no text.
std::optional<std::string> StatedDefault(const PageAttribute& attribute) {
    if (attribute.defaultText == "empty") {
        return "";
    }
    const std::size_t length = attribute.defaultText.size();
    if (length > 2 && attribute.defaultText.front() == '`' && attribute.defaultText.back() == '`') {
        return attribute.defaultText.substr(1, length - 2);
    }
    return std::nullopt;
}

class FormatReading : public test::SerializerFixture {
protected:
    FormatReading() {
        // So that a relative path matters: it leads to a file, and the absolute one does not.
        std::filesystem::create_directory(folder / "media");
        folder.Write("media/voice.wav", "sound");
    }

    /// What the host hears of an element with these attributes.
    const std::string& Calls(const GoldenElement& golden, const Attributes& attributes) {
        const std::string document = DocumentOf(golden, With(attributes, kMeaningless, "0"));
        const auto [heard, isNew] = heardOf_.try_emplace(document);
        if (isNew) {
            heard->second = Heard(document);
        }
        return heard->second;
    }

    std::string Heard(const std::string& document) {
        // A new file each time: one that is written over goes to the disk at once.
        std::filesystem::remove(folder / "session.orvo");
        folder.Write("session.orvo", document);
        const auto node = refhost::SessionNode::Make();
        std::string calls;
        refhost::Recorder::Options options;
        options.sink = [&](const refhost::CallRecord& call) {
            calls += refhost::FormatCallAsJson(call) + "\n";
        };
        refhost::Recorder recorder(std::move(options));
        calls += serializer->Read(Path(), Retain(&recorder.Wrap(node->Edit()))) ? "read" : "failed";
        return calls;
    }

    /// The sets of attributes that an attribute is looked at among: the element's own, and none.
    static std::vector<Attributes> Surroundings(const GoldenElement& golden) {
        return {golden.element.attributes, {}};
    }

    using Check = std::function<void(const GoldenElement& golden, const PageAttribute& attribute,
                                     const Attributes& surroundings)>;

    void ForEveryAttributeThatIsRead(const Check& check) {
        for (const GoldenElement& golden : elements) {
            for (const PageAttribute& attribute : golden.section->attributes) {
                if (attribute.IsRead()) {
                    for (const Attributes& surroundings : Surroundings(golden)) {
                        check(golden, attribute, surroundings);
                    }
                }
            }
        }
    }

    bool Matters(const GoldenElement& golden, const PageAttribute& attribute) {
        std::vector<std::string> values = attribute.Keywords();
        values.insert(values.end(), kProbes.begin(), kProbes.end());
        if (const auto own = golden.element.attributes.find(attribute.name);
            own != golden.element.attributes.end()) {
            values.push_back(own->second);
        }
        for (const Attributes& surroundings : Surroundings(golden)) {
            const std::string without = Calls(golden, Without(surroundings, attribute.name));
            for (const std::string& value : values) {
                if (Calls(golden, With(surroundings, attribute.name, value)) != without) {
                    return true;
                }
            }
        }
        return false;
    }

    /// Attributes, as "anchor name", that some element of their section does something with.
    std::set<std::string> AllThatMatter() {
        std::set<std::string> found;
        for (const GoldenElement& golden : elements) {
            for (const PageAttribute& attribute : golden.section->attributes) {
                const std::string key = golden.section->anchor + " " + attribute.name;
                if (!found.contains(key) && Matters(golden, attribute)) {
                    found.insert(key);
                }
            }
        }
        return found;
    }

    void ExpectSame(const GoldenElement& golden, const Attributes& one, const Attributes& other,
                    const std::string& what) {
        EXPECT_EQ(Calls(golden, one), Calls(golden, other))
            << what << " in " << DocumentOf(golden, one);
    }

    const FormatPage page;
    const std::vector<GoldenElement> elements = test::GoldenElements(page);

private:
    std::map<std::string, std::string> heardOf_;  // by document
};

TEST_F(FormatReading, OfEverySectionThereIsAGoldenElement) {
    std::set<std::string> found = {"orvo"};
    for (const GoldenElement& golden : elements) {
        found.insert(golden.section->anchor);
    }
    for (const PageSection& section : page.Sections()) {
        EXPECT_TRUE(found.contains(section.anchor)) << section.anchor;
    }
}

TEST_F(FormatReading, AnAttributeThatThePageKnowsIsReadWhereThePageSaysSoAndNowhereElse) {
    std::set<std::string> stated;
    for (const PageSection& section : page.Sections()) {
        for (const PageAttribute& attribute : section.attributes) {
            EXPECT_TRUE(attribute.IsRead() || attribute.read == "no" || attribute.read == "dropped")
                << section.anchor << " " << attribute.name;
            if (attribute.IsRead()) {
                stated.insert(section.anchor + " " + attribute.name);
            }
        }
    }
    EXPECT_THAT(AllThatMatter(), ContainerEq(stated));
}

TEST_F(FormatReading, AnAttributeThatThePageDoesNotStateIsNotRead) {
    for (const GoldenElement& golden : elements) {
        const std::string calls = Calls(golden, golden.element.attributes);
        for (const char* const value : {"1", "true", "zzz"}) {
            Attributes attributes = golden.element.attributes;
#define TSES_SET_UNKNOWN(name)                              \
    if (golden.section->FindAttribute(#name) == nullptr) {  \
        attributes[kelcore::UTF16to8(names::name)] = value; \
    }
            TSES_NAMES(TSES_SET_UNKNOWN)
#undef TSES_SET_UNKNOWN
            EXPECT_EQ(Calls(golden, attributes), calls) << DocumentOf(golden, attributes);
        }
    }
}

TEST_F(FormatReading, TheRootsAttributesAreNotRead) {
    for (const std::string version : {"", " version='1.5'", " version='zzz'", " id='1'"}) {
        const auto outcome = Read("<orvo" + version + "><session/></orvo>");
        EXPECT_TRUE(outcome.ok);
        EXPECT_EQ(outcome.calls, ReadInSession("").calls);
    }
}

TEST_F(FormatReading, AnAttributeThatIsAbsentMeansTheStatedDefault) {
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        if (const auto value = StatedDefault(attribute)) {
            ExpectSame(golden, Without(surroundings, attribute.name),
                       With(surroundings, attribute.name, *value), attribute.name);
        }
    });
}

TEST_F(FormatReading, EveryDefaultIsATextOrOneOfTheWordsThatThePageExplains) {
    std::set<std::string> words;
    for (const PageSection& section : page.Sections()) {
        for (const PageAttribute& attribute : section.attributes) {
            if (!StatedDefault(attribute)) {
                words.insert(attribute.defaultText);
                EXPECT_EQ(attribute.defaultText == "-", !attribute.IsRead()) << attribute.name;
            }
        }
    }
    EXPECT_THAT(words,
                testing::UnorderedElementsAre("-", "none", "unchanged", "that of the clip before"));
}

TEST_F(FormatReading, ATextThatIsNoWholeNumberCountsAsAbsent) {
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        if (!kIntegerTypes.contains(attribute.type) || !StatedDefault(attribute)) {
            return;
        }
        std::vector<std::string> texts = {"", "zzz", " 7", "+7", "7.0", "9223372036854775808"};
        if (attribute.type != "i64") {
            texts.insert(texts.end(), {"4294967296", "-2147483649"});
        }
        for (const std::string& text : texts) {
            ExpectSame(golden, With(surroundings, attribute.name, text),
                       Without(surroundings, attribute.name), attribute.name + "=" + text);
        }
    });
}

TEST_F(FormatReading, AnExactNumberIsOneAsAWhole) {
    std::size_t checked = 0;
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        if (attribute.type == "exact real32") {
            ++checked;
            for (const char* const text : {"0,5", " 0.5", "0.5x", "zzz", ""}) {
                ExpectSame(golden, With(surroundings, attribute.name, text),
                           Without(surroundings, attribute.name), attribute.name + "=" + text);
            }
        }
    });
    EXPECT_GT(checked, 0u);
}

TEST_F(FormatReading, AnyOtherRealNumberIsReadAsFarAsItIsOne) {
    const std::pair<const char*, const char*> same[] = {
        {"0,5", "0.5"}, {" 0.5", "0.5"}, {"0.5 dB", "0.5"}, {"5e-1", "0.5"},
        {"", "0"},      {"zzz", "0"},    {"nan", "0"},      {"1e999", "0"}};
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        if (attribute.type == "real" || attribute.type == "real32") {
            for (const auto& [text, number] : same) {
                ExpectSame(golden, With(surroundings, attribute.name, text),
                           With(surroundings, attribute.name, number), attribute.name);
            }
        }
    });
}

TEST_F(FormatReading, ABooleanIsTrueForItsWordAloneUnlessItTakesOneAsWell) {
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        if (attribute.type != "boolean" && attribute.type != "boolean or 1") {
            return;
        }
        for (const char* const text : {"TRUE", " true", "", "zzz"}) {
            ExpectSame(golden, With(surroundings, attribute.name, text),
                       With(surroundings, attribute.name, "false"), attribute.name);
        }
        ExpectSame(
            golden, With(surroundings, attribute.name, "1"),
            With(surroundings, attribute.name, attribute.type == "boolean" ? "false" : "true"),
            attribute.name);
    });
}

/// Numbers at the edge of what a type holds, and how the host gets them.
std::vector<std::pair<std::string, std::string>> Evidence(const PageAttribute& attribute) {
    if (attribute.type == "u32") {
        return {{"4294967295", "4294967295"}, {"-1", "4294967295"}};
    }
    if (attribute.type == "i32") {
        return {{"4294967295", "-1"}, {"-2147483648", "-2147483648"}};
    }
    if (attribute.type == "i64") {
        return {{"9223372036854770000", "92233720368547"}};  // a duration is off by a little
    }
    if (attribute.type == "real32" || attribute.type == "exact real32") {
        return {{"0.333333333333333333", "0.33333334"}};
    }
    if (attribute.type == "real") {
        return {{"0.333333333333333333", "0.3333333333333333"}};
    }
    return {};
}

TEST_F(FormatReading, ANumberHasTheStatedWidthAndSign) {
    std::set<std::string> expected;
    std::set<std::string> seen;
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        for (const auto& [text, value] : Evidence(attribute)) {
            const std::string key = golden.section->anchor + " " + attribute.name + "=" + text;
            expected.insert(key);
            const std::string& calls = Calls(golden, With(surroundings, attribute.name, text));
            if (calls.find(value) != std::string::npos) {
                seen.insert(key);
            }
        }
    });
    EXPECT_THAT(seen, ContainerEq(expected));
}

TEST_F(FormatReading, EveryKeywordMeansSomethingElse) {
    std::set<std::string> expected;
    std::set<std::string> told;
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        const std::vector<std::string> keywords = attribute.Keywords();
        if (keywords.empty()) {
            return;
        }
        std::set<std::string> meanings;
        for (const std::string& keyword : keywords) {
            meanings.insert(Calls(golden, With(surroundings, attribute.name, keyword)));
        }
        const std::string key = golden.section->anchor + " " + attribute.name;
        expected.insert(key);
        if (meanings.size() == keywords.size()) {
            told.insert(key);
        }
    });
    EXPECT_THAT(told, ContainerEq(expected));
}

TEST_F(FormatReading, AChoiceOfKeywordsOrNumbersCountsTheKeywords) {
    std::size_t checked = 0;
    ForEveryAttributeThatIsRead([&](const GoldenElement& golden, const PageAttribute& attribute,
                                    const Attributes& surroundings) {
        if (!attribute.type.ends_with(", or u32")) {
            return;
        }
        ++checked;
        const std::vector<std::string> keywords = attribute.Keywords();
        for (std::size_t i = 0; i < keywords.size(); ++i) {
            ExpectSame(golden, With(surroundings, attribute.name, keywords[i]),
                       With(surroundings, attribute.name, std::to_string(i)), attribute.name);
        }
        EXPECT_NE(Calls(golden, With(surroundings, attribute.name, "77")),
                  Calls(golden, With(surroundings, attribute.name, keywords.back())));
    });
    EXPECT_GT(checked, 0u);
}

TEST_F(FormatReading, TheLimitsAreThoseOfThePage) {
    constexpr kelcore::uint64 kMiB = kelcore::uint64{1024} * 1024;
    const std::string text = test::ReadFile(test::SourceFolder() / "docs/format.md");
    const auto expectRow = [&](const std::string& limit, const std::string& value) {
        EXPECT_THAT(text, HasSubstr("\n| " + limit + " | " + value + " |\n"));
    };
    expectRow("depth of elements, including `orvo`", std::to_string(limits::kDepth));
    expectRow("attributes of an element", std::to_string(limits::kAttributes));
    expectRow("namespace prefixes in scope at a place", std::to_string(limits::kPrefixes));
    expectRow("different names of elements, of prefixes, of namespaces",
              std::to_string(limits::kNames) + " each");
    expectRow("one such name",
              std::to_string(limits::kNameUnits) +
                  " UTF-16 units, including an element's prefix and the colon after it");
    expectRow("one tag or processing instruction",
              std::to_string(limits::kTagBytes / kMiB) + " MiB");
    expectRow("one CDATA section or comment",
              std::to_string(limits::kSectionBytes / kMiB) + " MiB");
    expectRow("white space before or after the root",
              std::to_string(limits::kSectionBytes / kMiB) + " MiB in one piece");
    expectRow("the file", std::to_string(limits::kFileBytes / kMiB / 1024) + " GiB");
}

TEST_F(FormatReading, EveryTypeIsOneThatThePageExplains) {
    for (const PageSection& section : page.Sections()) {
        for (const PageAttribute& attribute : section.attributes) {
            EXPECT_TRUE(kIntegerTypes.contains(attribute.type) ||
                        kOtherTypes.contains(attribute.type) || !attribute.Keywords().empty())
                << section.anchor << " " << attribute.name << ": " << attribute.type;
        }
    }
}

TEST_F(FormatReading, ATextIsReadWhereThePageSaysSoAndTrimmedUnlessItSaysNot) {
    for (GoldenElement golden : elements) {
        const auto calls = [&](const char* text) {
            golden.element.text = text;
            return Calls(golden, golden.element.attributes);
        };
        const PageSection& section = *golden.section;
        const bool isRead = section.text != "none" && section.text != "dropped";
        EXPECT_EQ(calls("") != calls("AAEC"), isRead) << section.anchor;
        if (isRead) {
            EXPECT_EQ(calls("AAEC") == calls(" \t\r\nAAEC \n"),
                      section.text.find("without blanks at its ends") != std::string::npos)
                << section.anchor;
        }
    }
}

}  // namespace
}  // namespace tses
