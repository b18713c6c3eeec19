#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/serializer/Serializer.h"
#include "reference_host/Progress.h"
#include "reference_host/model/Session.h"
#include "reference_host/recorder/FaultPlan.h"
#include "tests/support/TemporaryFolder.h"

namespace test {

struct ReadOutcome {
    bool ok = false;
    /// "IEditFile#2.SetPath("/a.wav")" for each call but those of SetProgress; " -> IEditFile#2" or
    /// " -> null" follows where a host object is returned.
    std::vector<std::string> calls;
    std::vector<refhost::Progress> progress;
    std::vector<std::string> log;
    refhost::model::Session session;
};

struct WriteOutcome {
    bool ok = false;
    std::vector<std::string> calls;
    std::vector<refhost::Progress> progress;
    /// What stands at the path afterwards; none if there is no file.
    std::optional<std::string> file;
};

struct HostSetup {
    bool logTarget = true;
    refhost::FaultPlan faults;
    /// Decides instead of the faults, if there is one.
    refhost::Interceptor interceptor;
};

/// One serializer between documents and the reference host. After each test, nothing of the host
/// may be alive.
class SerializerFixture : public testing::Test {
protected:
    SerializerFixture();
    ~SerializerFixture() override;

    /// Reads a document; its file is `Path()`.
    ReadOutcome Read(std::string_view document, const HostSetup& host = {});
    /// Reads whatever stands at a path.
    ReadOutcome ReadPath(const std::u16string& path, const HostSetup& host = {});
    /// Reads `content` as the children of the root.
    ReadOutcome ReadInRoot(std::string_view content, const HostSetup& host = {});
    /// Reads `content` as the children of "session"; fails the test if that does not succeed.
    ReadOutcome ReadInSession(std::string_view content, const HostSetup& host = {});

    /// Writes a session to `Path()`.
    WriteOutcome Write(const refhost::model::Session& session, const HostSetup& host = {});
    WriteOutcome WriteTo(const std::u16string& path, const refhost::model::Session& session,
                         const HostSetup& host = {});
    /// The same by a serializer whose writer fails at one of its operations.
    WriteOutcome WriteWithFault(const refhost::model::Session& session, std::size_t atOperation);
    /// The same for one session after the other, by a serializer that makes the document's nodes in
    /// that way.
    std::vector<WriteOutcome> WriteWithNodes(const std::vector<refhost::model::Session>& sessions,
                                             tses::NodeMaker makeNodes);

    std::u16string Path() const;

    /// The calls of one operation, or of all operations that contain the text.
    static std::vector<std::string> CallsOf(const std::vector<std::string>& calls,
                                            std::string_view text);

    TemporaryFolder folder;
    std::optional<tses::Serializer> serializer;
};

}  // namespace test
