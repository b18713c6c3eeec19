#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>
#include <xercesc/sax/SAXParseException.hpp>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/FailureTrace.h"
#include "plugin/xml/SessionXMLReader.h"
#include "plugin/xml/XercesPlatform.h"
#include "tests/support/TemporaryFolder.h"

namespace tses {

inline std::string Utf8(std::u16string_view text) {
    return kelcore::UTF16to8(text);
}

/// Writes down every event as a line.
class Events final : public SAXContentHandler, public SAXErrorHandler {
public:
    std::vector<std::string> lines;
    std::vector<std::string> problems;
    bool throwOnError = true;
    std::string throwAtElement;
    std::string throwParserExceptionAtElement;
    std::function<void()> atEachElement;

    void StartDocument() override { lines.emplace_back("start of document"); }
    void EndDocument() override { lines.emplace_back("end of document"); }

    void StartElementEvent(std::u16string_view uri, std::u16string_view localName,
                           std::u16string_view qualifiedName,
                           const TagAttributes& attributes) override {
        std::string line = "<" + Utf8(localName) + "|" + Utf8(uri) + "|" + Utf8(qualifiedName);
        std::map<std::string, std::string> byName;
        for (const auto& attribute : attributes) {
            byName.emplace(Utf8(attribute.name), Utf8(attribute.value));
        }
        for (const auto& [name, value] : byName) {
            line.append(" ").append(name).append("=").append(value);
        }
        lines.push_back(line);
        if (atEachElement) {
            atEachElement();
        }
        if (Utf8(localName) == throwAtElement) {
            throw std::runtime_error("refused");
        }
        if (Utf8(localName) == throwParserExceptionAtElement) {
            throw xercesc::SAXParseException(u"out of tune", u"", u"", 1, 1);
        }
    }

    void EndElementEvent(std::u16string_view uri, std::u16string_view localName,
                         std::u16string_view qualifiedName) override {
        lines.push_back(">" + Utf8(localName) + "|" + Utf8(uri) + "|" + Utf8(qualifiedName));
    }

    void CharactersEvent(std::u16string_view text) override {
        lines.push_back("'" + Utf8(text) + "'");
    }

    void Warning(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
                 std::u16string_view systemId, std::u16string_view message) override {
        Add("warning", line, column, publicId, systemId, message);
    }
    void Error(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
               std::u16string_view systemId, std::u16string_view message) override {
        Add("error", line, column, publicId, systemId, message);
        ThrowIfAsked();
    }
    void FatalError(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
                    std::u16string_view systemId, std::u16string_view message) override {
        Add("fatal", line, column, publicId, systemId, message);
        ThrowIfAsked();
    }

private:
    void Add(const char* kind, kelcore::uint64 line, kelcore::uint64 column,
             std::u16string_view publicId, std::u16string_view systemId,
             std::u16string_view message) {
        problems.push_back(std::string(kind) + " " + std::to_string(line) + ":" +
                           std::to_string(column) + " [" + Utf8(publicId) + "][" + Utf8(systemId) +
                           "] " + Utf8(message));
    }
    void ThrowIfAsked() const {
        if (throwOnError) {
            throw ReportedFailure("parsing error.");
        }
    }
};

/// A reader whose events, problems and trace are kept.
class SessionXMLReaderTest : public testing::Test {
protected:
    SessionXMLReaderTest() {
        StartXerces();
        kelcore::trace::SetOutput([this](std::string_view category, std::string_view text) {
            traced.push_back(std::string(category) + ": " + std::string(text));
        });
    }
    ~SessionXMLReaderTest() override {
        kelcore::trace::SetOutput({});
        kelcore::trace::SetEnabled(kelcore::trace::kReaderCategory, true);
        StopXerces();
    }

    bool ParseText(std::string_view document) {
        return ParseFile(folder.Write("document.orvo", document));
    }
    bool ParseFile(const std::filesystem::path& path) {
        SessionXMLReader reader(&events, &events);
        return reader.Parse(kelcore::PathFromBytes(path.string()));
    }

    test::TemporaryFolder folder;
    Events events;
    std::vector<std::string> traced;
};

}  // namespace tses
