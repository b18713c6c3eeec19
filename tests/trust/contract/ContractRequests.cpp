#include "tests/trust/contract/ContractRequests.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "platform/kelcore/Paths.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/SessionNode.h"
#include "reference_host/recorder/Operations.h"

namespace test {
namespace {

using tses::SessionResult;

constexpr std::string_view kOldContent = "what stood there before";

std::u16string PathOf(const std::filesystem::path& path) {
    return kelcore::PathFromBytes(path.string());
}

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string Text(SessionResult result) {
    return std::to_string(static_cast<int>(result));
}

HostCall Describe(const refhost::CallRecord& call) {
    HostCall described{call.sequence, call.interfaceName, std::string(call.operation)};
    for (const refhost::HostOperation& operation : refhost::HostOperations()) {
        if (operation.interfaceName == call.interfaceName && operation.name == call.operation) {
            described.returnsObject = operation.returnsObject;
            described.returnsNumber = operation.returnsNumber;
            described.returnsText = operation.returnsObject && !call.returned;
        }
    }
    return described;
}

/// A folder with one existing file.
struct Target {
    TemporaryFolder folder;
    std::filesystem::path file = folder.Write("a.orvo", kOldContent);

    bool IsAlone() const {
        return std::distance(std::filesystem::directory_iterator(folder.Path()),
                             std::filesystem::directory_iterator()) == 1;
    }
};

}  // namespace

Request::Request(refhost::Plugin& plugin, Kind kind, std::filesystem::path file)
    : plugin_(plugin),
      kind_(kind),
      file_(std::move(file)),
      name_((IsWrite() ? "write " : "read ") + file_.filename().string()) {
    expected_ = refhost::ReadSession(plugin_, PathOf(file_)).session;
    const Target target;
    orvo::Session session = expected_;
    undisturbed_ =
        Run({.sink = [this](const refhost::CallRecord& call) { calls_.push_back(Describe(call)); },
             .interceptor = {}},
            session, target.file);
    written_ = Content(target.file);
}

SessionResult Request::Failure() const {
    return IsWrite() ? SessionResult::WriteFailed : SessionResult::ReadFailed;
}

SessionResult Request::Run(const refhost::Recorder::Options& options, orvo::Session& session,
                           const std::filesystem::path& target) const {
    refhost::Recorder recorder(options);
    SessionResult result = SessionResult::Ok;
    if (IsWrite()) {
        const auto node = refhost::SessionNode::Make(session);
        result = plugin_.Write(PathOf(target), recorder.Wrap(node->Query()));
        plugin_.ReleaseContext();
    } else {
        const auto node = refhost::SessionNode::Make();
        node->SetLogTarget(refhost::Ref<refhost::LogTarget>::Adopt(new refhost::LogTarget));
        result = plugin_.Read(PathOf(file_), recorder.Wrap(node->Edit()));
        session = node->Value();
    }
    return result;
}

std::vector<std::string> Request::Disturb(const refhost::Interceptor& interceptor,
                                          SessionResult expected) const {
    return Disturb(interceptor, expected,
                   [](const orvo::Session& /*session*/) { return std::vector<std::string>(); });
}

std::vector<std::string> Request::Disturb(const refhost::Interceptor& interceptor,
                                          SessionResult expected,
                                          const Inspector& inspector) const {
    std::vector<std::string> problems;
    const Target target;
    const std::size_t liveNodes = refhost::LiveNodes();
    orvo::Session session = expected_;
    const SessionResult result =
        Run({.sink = {}, .interceptor = interceptor}, session, target.file);
    if (result != expected) {
        problems.push_back("gives " + Text(result) + " for " + Text(expected));
    }
    if (refhost::LiveNodes() != liveNodes) {
        problems.emplace_back("host objects leak");
    }
    if (!target.IsAlone()) {
        problems.emplace_back("it leaves other files in the folder");
    }
    if (IsWrite() && result == SessionResult::Ok) {
        const refhost::ReadResult read = refhost::ReadSession(plugin_, PathOf(target.file));
        if (read.result != SessionResult::Ok) {
            problems.emplace_back("the saved file cannot be read");
        }
        std::ranges::move(inspector(read.session), std::back_inserter(problems));
    } else if (Content(target.file) != kOldContent) {
        problems.emplace_back("the old file is lost");
    }

    orvo::Session next = expected_;
    const SessionResult nextResult = Run({.sink = {}, .interceptor = {}}, next, target.file);
    std::ranges::move(Judge(nextResult, next, target.file), std::back_inserter(problems));
    if (refhost::LiveNodes() != liveNodes) {
        problems.emplace_back("the next request leaks host objects");
    }
    return problems;
}

std::vector<std::string> Request::Judge(SessionResult result, const orvo::Session& session,
                                        const std::filesystem::path& target) const {
    if (result != undisturbed_) {
        return {"the next request gives " + Text(result)};
    }
    if (IsWrite() ? Content(target) != written_ : session != expected_) {
        return {"the next request is not what it was"};
    }
    return {};
}

std::vector<Request> Requests(refhost::Plugin& plugin, const Options& options,
                              const TemporaryFolder& folder) {
    const auto malformed = folder.Write("malformed.orvo", "<orvo><session></orvo>");
    std::vector<Request> requests;
    requests.emplace_back(plugin, Request::Kind::Read, malformed);
    requests.emplace_back(plugin, Request::Kind::Read, folder.Path() / "missing.orvo");
    for (const char* const name : {"everything.orvo", "read-only.orvo"}) {
        requests.emplace_back(plugin, Request::Kind::Read, options.goldenFolder / name);
        requests.emplace_back(plugin, Request::Kind::Write, options.goldenFolder / name);
    }
    return requests;
}

refhost::Interceptor AtCall(std::uint64_t number, refhost::CallDecision decision) {
    return [number, decision](const refhost::CallRecord& call) {
        return call.sequence == number ? decision : refhost::CallDecision::Forward();
    };
}

}  // namespace test
