#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Model.h>
#include "plugin/serializer/Serializer.h"
#include "reference_host/Progress.h"
#include "reference_host/recorder/FaultPlan.h"
#include "tests/support/TemporaryFolder.h"

namespace test {

struct ReadOutcome {
    bool ok = false;
    /// "IEditFile#2.SetPath("/a.wav")" for each call except SetProgress, followed by " ->
    /// IEditFile#2" or " -> null" if the call returns a host object.
    std::vector<std::string> calls;
    std::vector<refhost::Progress> progress;
    std::vector<std::string> log;
    orvo::Session session;
};

struct WriteOutcome {
    bool ok = false;
    std::vector<std::string> calls;
    std::vector<refhost::Progress> progress;
    /// The content of the file afterwards; nothing if there is no file.
    std::optional<std::string> file;
};

struct HostSetup {
    bool logTarget = true;
    refhost::FaultPlan faults;
    /// If set, replaces the faults.
    refhost::Interceptor interceptor;
};

/// Runs a serializer between documents and the reference host. After each test, no host object may
/// be alive.
class SerializerFixture : public testing::Test {
protected:
    SerializerFixture();
    ~SerializerFixture() override;

    /// Reads a document from `Path()`.
    ReadOutcome Read(std::string_view document, const HostSetup& host = {});
    /// Reads the existing file at a path.
    ReadOutcome ReadPath(const std::u16string& path, const HostSetup& host = {});
    /// Reads `content` as the children of the root.
    ReadOutcome ReadInRoot(std::string_view content, const HostSetup& host = {});
    /// Reads `content` as the children of "session"; fails the test if that does not succeed.
    ReadOutcome ReadInSession(std::string_view content, const HostSetup& host = {});

    /// Writes a session to `Path()`.
    WriteOutcome Write(const orvo::Session& session, const HostSetup& host = {});
    WriteOutcome WriteTo(const std::u16string& path, const orvo::Session& session,
                         const HostSetup& host = {});
    /// Likewise, with a serializer whose writer fails at the given operation.
    WriteOutcome WriteWithFault(const orvo::Session& session, std::size_t atOperation);
    /// Writes several sessions with one serializer, as documents of the given kind.
    std::vector<WriteOutcome> WriteWith(const std::vector<orvo::Session>& sessions,
                                        tses::DocumentMaker makeDocument);

    std::u16string Path() const;

    /// The calls whose operation contains the text.
    static std::vector<std::string> CallsOf(const std::vector<std::string>& calls,
                                            std::string_view text);

    TemporaryFolder folder;
    std::optional<tses::Serializer> serializer;
};

}  // namespace test
