#include "tests/support/SerializerFixture.h"

#include <nlohmann/json.hpp>

#include "host/Session.h"
#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "plugin/xml/XercesPlatform.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/SessionNode.h"
#include "reference_host/recorder/CallJson.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/support/DocumentUnderTest.h"

namespace test {
namespace {

using Json = nlohmann::ordered_json;

std::string ShortForm(const refhost::CallRecord& call) {
    const Json json = Json::parse(refhost::FormatCallAsJson(call));
    std::string arguments = json["args"].dump();
    arguments = "(" + arguments.substr(1, arguments.size() - 2) + ")";
    std::string text =
        json["object"].get<std::string>() + "." + json["call"].get<std::string>() + arguments;
    if (json.contains("returns")) {
        text +=
            json["returns"].is_null() ? " -> null" : " -> " + json["returns"].get<std::string>();
    }
    return text;
}

refhost::Recorder::Options RecordInto(std::vector<std::string>& calls, const HostSetup& host) {
    refhost::Recorder::Options options;
    options.sink = [&calls](const refhost::CallRecord& call) {
        if (call.operation != "SetProgress") {
            calls.push_back(ShortForm(call));
        }
    };
    options.interceptor = host.interceptor ? host.interceptor : host.faults;
    return options;
}

WriteOutcome WriteBy(tses::Serializer& serializer, const std::u16string& path,
                     const orvo::Session& session, const HostSetup& host) {
    WriteOutcome outcome;
    const auto node = refhost::SessionNode::Make(session);
    {
        refhost::Recorder recorder(RecordInto(outcome.calls, host));
        outcome.ok = serializer.Write(path, tses::Retain(&recorder.Wrap(node->Query())));
    }
    outcome.progress = node->Reports();
    const std::string systemPath = kelcore::PathToBytes(path);
    if (std::filesystem::is_regular_file(systemPath)) {
        outcome.file = ReadFile(systemPath);
    }
    return outcome;
}

}  // namespace

SerializerFixture::SerializerFixture() {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", true);
    tses::StartXerces();
    serializer.emplace(tses::WriterFault(), DocumentUnderTest());
}

SerializerFixture::~SerializerFixture() {
    serializer.reset();
    tses::StopXerces();
    EXPECT_EQ(refhost::LiveNodes(), 0u);
}

std::u16string SerializerFixture::Path() const {
    return kelcore::PathFromBytes((folder / "session.orvo").string());
}

ReadOutcome SerializerFixture::Read(std::string_view document, const HostSetup& host) {
    folder.Write("session.orvo", document);
    return ReadPath(Path(), host);
}

ReadOutcome SerializerFixture::ReadPath(const std::u16string& path, const HostSetup& host) {
    ReadOutcome outcome;
    const auto node = refhost::SessionNode::Make();
    if (host.logTarget) {
        node->SetLogTarget(refhost::Ref<refhost::LogTarget>::Adopt(
            new refhost::LogTarget([&outcome](const std::u16string& message) {
                outcome.log.push_back(kelcore::UTF16to8(message));
            })));
    }
    {
        refhost::Recorder recorder(RecordInto(outcome.calls, host));
        outcome.ok = serializer->Read(path, tses::Retain(&recorder.Wrap(node->Edit())));
    }
    outcome.progress = node->Reports();
    outcome.session = node->Value();
    return outcome;
}

ReadOutcome SerializerFixture::ReadInRoot(std::string_view content, const HostSetup& host) {
    return Read("<orvo version='1.5'>" + std::string(content) + "</orvo>", host);
}

ReadOutcome SerializerFixture::ReadInSession(std::string_view content, const HostSetup& host) {
    ReadOutcome outcome = ReadInRoot("<session>" + std::string(content) + "</session>", host);
    EXPECT_TRUE(outcome.ok) << content;
    return outcome;
}

WriteOutcome SerializerFixture::Write(const orvo::Session& session, const HostSetup& host) {
    return WriteTo(Path(), session, host);
}

WriteOutcome SerializerFixture::WriteTo(const std::u16string& path, const orvo::Session& session,
                                        const HostSetup& host) {
    return WriteBy(*serializer, path, session, host);
}

WriteOutcome SerializerFixture::WriteWithFault(const orvo::Session& session,
                                               std::size_t atOperation) {
    tses::Serializer faulty(tses::WriterFault{atOperation}, DocumentUnderTest());
    return WriteBy(faulty, Path(), session, {});
}

std::vector<WriteOutcome> SerializerFixture::WriteWith(const std::vector<orvo::Session>& sessions,
                                                       tses::DocumentMaker makeDocument) {
    tses::Serializer other({}, makeDocument);
    std::vector<WriteOutcome> outcomes;
    for (const orvo::Session& session : sessions) {
        outcomes.push_back(WriteBy(other, Path(), session, {}));
    }
    return outcomes;
}

std::vector<std::string> SerializerFixture::CallsOf(const std::vector<std::string>& calls,
                                                    std::string_view text) {
    std::vector<std::string> found;
    for (const std::string& call : calls) {
        if (call.find(text) != std::string::npos) {
            found.push_back(call);
        }
    }
    return found;
}

}  // namespace test
