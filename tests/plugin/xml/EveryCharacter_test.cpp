#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "format/CarriableText.h"
#include "format/Names.h"
#include "platform/kelcore/Paths.h"
#include "plugin/xml/SessionXMLReader.h"
#include "plugin/xml/SessionXMLWriter.h"
#include "plugin/xml/XercesPlatform.h"
#include "tests/plugin/xml/OtherParsers.h"
#include "tests/support/DocumentUnderTest.h"
#include "tests/support/TemporaryFolder.h"

namespace tses {
namespace {

using test::Values;

/// A text and its place. Each case gets an element of its own under the root.
struct Case {
    TextPlace place;
    std::u16string text;
};

constexpr std::array kPlaces = {TextPlace::Attribute, TextPlace::Section, TextPlace::Text};

bool IsControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F);
}

/// Whether the case makes the document XML 1.1.
bool SwitchesToXml11(const Case& tried) {
    const bool hasControl = std::any_of(tried.text.begin(), tried.text.end(), [](char16_t unit) {
        return IsControl(unit) && unit != 0x85;
    });
    return tried.place == TextPlace::Text && hasControl;
}

bool IsInRange(const std::u16string& text, std::size_t at, char16_t first, char16_t last) {
    return at < text.size() && text[at] >= first && text[at] <= last;
}

bool IsReplaced(const std::u16string& text, std::size_t at, XmlVersion version) {
    const char16_t unit = text[at];
    if (IsInRange(text, at, 0xD800, 0xDBFF)) {
        return !IsInRange(text, at + 1, 0xDC00, 0xDFFF);
    }
    if (IsInRange(text, at, 0xDC00, 0xDFFF)) {
        return at == 0 || !IsInRange(text, at - 1, 0xD800, 0xDBFF);
    }
    if (unit == 0 || unit == 0xFFFE || unit == 0xFFFF) {
        return true;
    }
    const bool isSpace = unit == 0x9 || unit == 0xA || unit == 0xD;
    return unit < 0x20 && !isSpace && version == XmlVersion::V1_0;
}

std::u16string Expected(const std::u16string& text, XmlVersion version) {
    std::u16string expected = text;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsReplaced(text, i, version)) {
            expected[i] = 0xFFFD;
        }
    }
    return expected;
}

std::string Hexadecimal(const std::u16string& text) {
    std::ostringstream out;
    for (const char16_t unit : text) {
        out << std::hex << std::uppercase << ' ' << int{unit};
    }
    return out.str();
}

/// The value of each element: its attribute, or its content if it has no attribute.
class ValueReader final : public SAXContentHandler {
public:
    Values values;

    void StartDocument() override {}
    void EndDocument() override {}
    void StartElementEvent(std::u16string_view, std::u16string_view, std::u16string_view,
                           const TagAttributes& attributes) override {
        value_ = attributes.Find(names::key).value_or(std::u16string_view());
    }
    void EndElementEvent(std::u16string_view, std::u16string_view localName,
                         std::u16string_view) override {
        if (localName == names::name) {
            values.push_back(value_);
        }
    }
    void CharactersEvent(std::u16string_view text) override { value_ += text; }

private:
    std::u16string value_;
};

class EveryCharacter : public testing::TestWithParam<XmlVersion> {
protected:
    EveryCharacter() { StartXerces(); }
    ~EveryCharacter() override { StopXerces(); }

    static bool IsXml11() { return GetParam() == XmlVersion::V1_1; }

    /// Adds the text in every place where it does not change the version of the document.
    static void AddEverywhere(std::vector<Case>& cases, const std::u16string& text) {
        for (const TextPlace place : kPlaces) {
            if (IsXml11() || !SwitchesToXml11({place, text})) {
                cases.push_back({place, text});
            }
        }
    }

    std::string Save(const std::vector<Case>& cases) {
        const std::filesystem::path path = folder_ / "values.orvo";
        SessionXMLWriter writer(kelcore::PathFromBytes(path.string()), {},
                                test::DocumentUnderTest());
        for (const Case& tried : cases) {
            EXPECT_TRUE(WriteCase(writer, tried)) << Hexadecimal(tried.text);
        }
        EXPECT_TRUE(writer.Save());
        return test::ReadFile(path);
    }

    static bool WriteCase(SessionXMLWriter& writer, const Case& tried) {
        switch (tried.place) {
            case TextPlace::Attribute:
                return writer.StartElement(names::name, {{names::key, tried.text}}) &&
                       writer.EndElement();
            case TextPlace::Text:
                return writer.StartElement(names::name) && writer.Text(tried.text) &&
                       writer.EndElement();
            case TextPlace::Section:
                return writer.StartElement(names::name) && writer.Characters(tried.text) &&
                       writer.EndElement();
        }
        return false;
    }

    std::optional<Values> ReadBySessionReader() {
        ValueReader read;
        SessionXMLReader reader(&read, nullptr);
        const bool wasRead =
            reader.Parse(kelcore::PathFromBytes((folder_ / "values.orvo").string()));
        return wasRead ? std::optional(std::move(read.values)) : std::nullopt;
    }

    static void ExpectValues(const std::vector<Case>& cases, const std::optional<Values>& read) {
        ASSERT_TRUE(read.has_value()) << "the document is malformed";
        const Values& values = *read;
        ASSERT_EQ(values.size(), cases.size());
        int failures = 0;
        for (std::size_t i = 0; i < cases.size() && failures < 20; ++i) {
            const std::u16string expected = Expected(cases[i].text, GetParam());
            if (values[i] != expected) {
                ++failures;
                ADD_FAILURE() << "place " << int(cases[i].place) << ":"
                              << Hexadecimal(cases[i].text) << " came back as"
                              << Hexadecimal(values[i]);
            }
        }
    }

    void ExpectAllSurvive(const std::vector<Case>& cases) {
        const std::string document = Save(cases);
        ASSERT_EQ(document.find("version=\"1.1\"") != std::string::npos, IsXml11());
        ExpectValues(cases, ReadBySessionReader());
        if (!IsXml11()) {  // which the other parsers do not know
            ExpectValues(cases, test::ReadByExpat(document));
            ExpectValues(cases, test::ReadByLibxml2(document));
        }
    }

private:
    test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(InXml, EveryCharacter, testing::Values(XmlVersion::V1_0, XmlVersion::V1_1),
                         [](const testing::TestParamInfo<XmlVersion>& version) {
                             return version.param == XmlVersion::V1_0 ? "10" : "11";
                         });

TEST_P(EveryCharacter, SurvivesAloneOrIsReplaced) {
    std::vector<Case> cases;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        AddEverywhere(cases, std::u16string(1, static_cast<char16_t>(unit)));
    }
    ExpectAllSurvive(cases);
}

TEST_P(EveryCharacter, SurvivesBesideEveryOtherOrIsReplaced) {
    std::u16string units = u"]>&<\"' a\u2028\u2029\u4E00\uFFFD\uFEFF";
    for (const unsigned unit : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0xFFFEU, 0xFFFFU}) {
        units += static_cast<char16_t>(unit);
    }
    for (char16_t unit = 0; unit <= 0x9F; ++unit) {
        if (IsControl(unit)) {
            units += unit;
        }
    }
    std::vector<Case> cases;
    for (const char16_t first : units) {
        for (const char16_t second : units) {
            AddEverywhere(cases, {first, second});
        }
    }
    ExpectAllSurvive(cases);
}

TEST_P(EveryCharacter, SurvivesBeyondTheBasicPlane) {
    std::vector<Case> cases;
    for (char16_t high = 0xD800; high <= 0xDBFF; ++high) {
        for (const unsigned low : {0xDC00U, 0xDC01U, 0xDDE5U, 0xDFFEU, 0xDFFFU}) {
            AddEverywhere(cases, {high, static_cast<char16_t>(low)});
        }
    }
    cases.push_back({TextPlace::Text, IsXml11() ? u"\t" : u" "});
    ExpectAllSurvive(cases);
}

// The serialiser and the parsers work through a text in blocks.
TEST_P(EveryCharacter, SurvivesWhereverItStandsInALongText) {
    std::u16string text;
    for (int i = 0; i < 40'000; ++i) {
        text += u"x]]>\U0001F3B5\r\n\u0085\u2028 \u4E00";
        text += i % 7 == 0 ? u"y" : u"";
        text += static_cast<char16_t>(i % 5 == 0 ? 0xD800 : 0x80 + i % 0x20);
    }
    std::vector<Case> cases = {{TextPlace::Section, text},
                               {TextPlace::Attribute, text.substr(0, 100'000)}};
    cases.push_back({TextPlace::Text, IsXml11() ? text : u" "});
    ExpectAllSurvive(cases);
}

}  // namespace
}  // namespace tses
