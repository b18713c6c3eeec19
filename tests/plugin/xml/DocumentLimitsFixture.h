#pragma once

#include <string>
#include <string_view>

#include "format/Limits.h"
#include "tests/plugin/xml/SessionXMLReaderFixture.h"

namespace tses {

inline std::string Repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

/// `count` copies of a piece, each with its number instead of "#".
inline std::string Numbered(std::string_view piece, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t number = piece.find('#');
        result.append(piece.substr(0, number)).append(std::to_string(i));
        result.append(piece.substr(number + 1));
    }
    return result;
}

inline std::string Nested(std::size_t depth) {
    return Repeated("<a>", depth) + Repeated("</a>", depth);
}

inline std::string Utf16LittleEndian(std::string_view latin1) {
    std::string result = "\xFF\xFE";
    for (const char character : latin1) {
        result += character;
        result += '\0';
    }
    return result;
}

inline std::string Utf16BigEndian(std::string_view latin1) {
    std::string result = Utf16LittleEndian(latin1);
    for (std::size_t i = 0; i < result.size(); i += 2) {
        std::swap(result[i], result[i + 1]);
    }
    return result;
}

inline std::string Declaring(const std::string& encoding) {
    return "<?xml version='1.0' encoding='" + encoding + "'?>";
}

class DocumentLimitsTest : public SessionXMLReaderTest {
protected:
    /// Whether the document is refused with one fatal error that contains `reason`, and nothing
    /// else is reported.
    testing::AssertionResult IsRefused(std::string_view document, const std::string& reason) {
        events.problems.clear();
        if (ParseText(document)) {
            return testing::AssertionFailure() << "the document was read";
        }
        if (events.problems.size() != 1 || !events.problems[0].starts_with("fatal ") ||
            events.problems[0].find(reason) == std::string::npos) {
            return testing::AssertionFailure() << testing::PrintToString(events.problems);
        }
        return testing::AssertionSuccess();
    }
};

}  // namespace tses
