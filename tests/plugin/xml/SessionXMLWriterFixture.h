#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "format/Names.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/SessionXMLWriter.h"
#include "plugin/xml/XercesPlatform.h"
#include "tests/support/DocumentUnderTest.h"
#include "tests/support/TemporaryFolder.h"

namespace tses {

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Keeps the trace of writers, and reads what they saved.
class SessionXMLWriterTest : public testing::Test {
protected:
    SessionXMLWriterTest() {
        StartXerces();
        kelcore::trace::SetOutput(
            [this](std::string_view, std::string_view text) { traced.emplace_back(text); });
    }
    ~SessionXMLWriterTest() override {
        kelcore::trace::SetOutput({});
        StopXerces();
    }

    std::filesystem::path Target() const { return folder / "session.orvo"; }
    std::u16string TargetPath() const { return kelcore::PathFromBytes(Target().string()); }
    SessionXMLWriter NewWriter(WriterFault fault = {}) const {
        return SessionXMLWriter(TargetPath(), fault, test::DocumentUnderTest());
    }
    static SessionXMLWriter WriterTo(const std::filesystem::path& path) {
        return SessionXMLWriter(kelcore::PathFromBytes(path.string()), {},
                                test::DocumentUnderTest());
    }
    std::string Saved() const { return test::ReadFile(Target()); }

    test::TemporaryFolder folder;
    std::vector<std::string> traced;
};

}  // namespace tses
