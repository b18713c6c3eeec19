#include "tests/plugin/elements/ElementFixture.h"

#include <gmock/gmock.h>

#include <utility>

#include "reference_host/SessionNode.h"
#include "reference_host/recorder/Recorder.h"

namespace test {
namespace {

using Calls = std::vector<std::string>;

Calls Without(Calls calls, const Calls& first, std::size_t last) {
    if (calls.size() < first.size() + last ||
        !std::equal(first.begin(), first.end(), calls.begin())) {
        ADD_FAILURE() << "unexpected calls around the content: " << testing::PrintToString(calls);
        return calls;
    }
    return Calls(calls.begin() + static_cast<std::ptrdiff_t>(first.size()),
                 calls.end() - static_cast<std::ptrdiff_t>(last));
}

refhost::Recorder::Options RecordWithReferences(Calls& calls) {
    refhost::Recorder::Options options;
    options.recordReferences = true;
    options.sink = [&calls](const refhost::CallRecord& call) {
        calls.push_back(call.interfaceName + "." + std::string(call.operation));
    };
    return options;
}

bool StartsElement(std::string_view line, std::string_view name) {
    if (!line.starts_with('<') || !line.substr(1).starts_with(name)) {
        return false;
    }
    const std::string_view after = line.substr(1 + name.size());
    return after.starts_with(' ') || after.starts_with('/') || after.starts_with('>');
}

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t length = text.find('\n');
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length == std::string_view::npos ? text.size() : length + 1);
    }
    return lines;
}

}  // namespace

std::string ElementOf(std::string_view document, std::string_view name) {
    const std::string endTag = "</" + std::string(name) + ">";
    std::string element;
    std::size_t indentation = 0;
    for (const std::string_view line : LinesOf(document)) {
        const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
        if (element.empty()) {
            if (!StartsElement(line.substr(blanks), name)) {
                continue;
            }
            indentation = blanks;
        } else {
            element += "\n";
        }
        element += line.substr(std::min(indentation, blanks));
        if (line.ends_with("/>") ? blanks == indentation : line.ends_with(endTag)) {
            return element;
        }
    }
    return element;
}

std::vector<std::string> ElementFixture::CallsIn(std::string_view content, const HostSetup& host) {
    const Calls around = ReadInSession("").calls;
    return Without(ReadInSession(content, host).calls, {around.begin(), around.end() - 1}, 1);
}

std::vector<std::string> ElementFixture::CallsInTrack(std::string_view content,
                                                      const HostSetup& host) {
    const std::string start = "<tracks><audioTrack id='7'>";
    const std::string end = "</audioTrack></tracks>";
    return Without(CallsIn(start + std::string(content) + end, host), CallsIn(start + end), 0);
}

orvo::AudioTrack ElementFixture::ReadInTrack(std::string_view content) {
    const ReadOutcome outcome = ReadInSession("<tracks><audioTrack id='7'>" + std::string(content) +
                                              "</audioTrack></tracks>");
    return outcome.session.audioTracks.at(0);
}

std::vector<std::string> ElementFixture::QueriesOf(std::string_view interfaceName,
                                                   const orvo::Session& session) {
    const WriteOutcome outcome = Write(session);
    EXPECT_TRUE(outcome.ok);
    std::vector<std::string> queries;
    for (const std::string& call : outcome.calls) {
        if (call.starts_with(std::string(interfaceName) + "#")) {
            const std::size_t begin = call.find('.') + 1;
            queries.push_back(call.substr(begin, call.find('(') - begin));
        }
    }
    return queries;
}

std::vector<std::string> ElementFixture::CallsWithReferences(std::string_view document) {
    folder.Write("session.orvo", document);
    Calls calls;
    const auto node = refhost::SessionNode::Make();
    refhost::Recorder recorder(RecordWithReferences(calls));
    EXPECT_TRUE(serializer->Read(Path(), tses::Retain(&recorder.Wrap(node->Edit()))));
    return calls;
}

std::vector<std::string> ElementFixture::CallsWithReferences(const orvo::Session& session) {
    Calls calls;
    const auto node = refhost::SessionNode::Make(session);
    refhost::Recorder recorder(RecordWithReferences(calls));
    EXPECT_TRUE(serializer->Write(Path(), tses::Retain(&recorder.Wrap(node->Query()))));
    return calls;
}

std::string ElementFixture::WrittenElement(std::string_view name, const orvo::Session& session,
                                           const HostSetup& host) {
    const WriteOutcome outcome = Write(session, host);
    EXPECT_TRUE(outcome.ok);
    return outcome.file ? ElementOf(*outcome.file, name) : std::string();
}

std::string ElementFixture::WrittenElement(std::string_view name, const orvo::AudioTrack& track,
                                           const HostSetup& host) {
    return WrittenElement(name, WithTrack(track), host);
}

orvo::Session ElementFixture::ThroughFile(const orvo::Session& session) {
    EXPECT_TRUE(Write(session).ok);
    const ReadOutcome outcome = ReadPath(Path());
    EXPECT_TRUE(outcome.ok);
    return outcome.session;
}

orvo::Session ElementFixture::WithTrack(orvo::AudioTrack track) {
    orvo::Session session;
    session.audioTracks.push_back(std::move(track));
    return session;
}

HostSetup ElementFixture::Null(std::string_view operation) {
    HostSetup host;
    host.faults.ReturnNull(operation);
    return host;
}

HostSetup ElementFixture::NullAtTheSecond(std::string_view operation) {
    HostSetup host;
    host.interceptor = [faults = Null(operation).faults,
                        asked = 0](const refhost::CallRecord& call) mutable {
        const refhost::CallDecision decision = faults(call);
        const bool meant = decision.kind == refhost::CallDecision::Kind::ReturnNull;
        return meant && ++asked == 2 ? decision : refhost::CallDecision::Forward();
    };
    return host;
}

}  // namespace test
