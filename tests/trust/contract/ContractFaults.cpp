#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "tests/trust/contract/ContractRequests.h"

// A host that fails in a single call of a request: it returns null or throws.

namespace test {
namespace {

using refhost::CallDecision;
using tses::SessionResult;

std::string CaseName(const Request& request, const HostCall& call, const std::string& what) {
    return request.Name() + ", call " + std::to_string(call.number) + ", " + call.Name() + " " +
           what;
}

/// The operation after a given call of a request; empty after the last one.
std::string NameAfter(const Request& request, const HostCall& call) {
    const auto& calls = request.Calls();
    const auto place = std::ranges::find(calls, call.number, &HostCall::number);
    const auto next = place == calls.end() ? place : std::next(place);
    return next == calls.end() ? std::string() : next->Name();
}

/// The expected result of a null. A track that the host does not know fails a read. A session
/// without a metronome closes its element too early and is not saved. Anything else that is missing
/// is left out. A read asks for the metronome twice, but only the second caller, which needs its
/// track, fails.
SessionResult ResultOfNull(const Request& request, const HostCall& call) {
    constexpr std::string_view kTrackOfMetronome = "IEditMetronomeInfo.GetTrack";
    constexpr std::string_view kFailing[] = {"IEditSession.GetAudioTrack", kTrackOfMetronome,
                                             "IQuerySession.GetMetronomeInfo"};
    const bool fails = std::ranges::find(kFailing, call.Name()) != std::end(kFailing) ||
                       (call.Name() == "IEditSession.GetMetronomeInfo" &&
                        NameAfter(request, call) == kTrackOfMetronome);
    return fails ? request.Failure() : request.Undisturbed();
}

}  // namespace

Tally RunNulls(const Options& options) {
    const TemporaryFolder folder;
    refhost::Plugin plugin;
    const std::vector<Request> requests = Requests(plugin, options, folder);
    std::vector<Case> cases;
    for (const Request& request : requests) {
        for (const HostCall& call : request.Calls()) {
            if (!call.returnsObject) {
                continue;
            }
            cases.push_back({CaseName(request, call, "returns null"), [&request, &call] {
                                 return request.Disturb(
                                     AtCall(call.number, CallDecision::ReturnNull()),
                                     ResultOfNull(request, call));
                             }});
        }
    }
    return RunCases(EachNth(cases, options.stride));
}

Tally RunThrows(const Options& options) {
    const TemporaryFolder folder;
    refhost::Plugin plugin;
    const std::vector<Request> requests = Requests(plugin, options, folder);
    const std::exception_ptr exceptions[] = {std::make_exception_ptr(42),
                                             std::make_exception_ptr(std::runtime_error("no"))};
    std::vector<Case> cases;
    for (const Request& request : requests) {
        for (const HostCall& call : request.Calls()) {
            for (const std::exception_ptr& exception : exceptions) {
                cases.push_back({CaseName(request, call, "throws"), [&request, &call, exception] {
                                     return request.Disturb(
                                         AtCall(call.number, CallDecision::Throw(exception)),
                                         request.Failure());
                                 }});
            }
        }
    }
    return RunCases(EachNth(cases, options.stride));
}

}  // namespace test
