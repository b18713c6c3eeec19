#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "reference_host/Sessions.h"
#include "reference_host/recorder/CallRecord.h"
#include "reference_host/recorder/FaultPlan.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/contract/Contract.h"

namespace test {

/// A call of a host operation during a request, numbered from the start of the request.
struct HostCall {
    std::uint64_t number = 0;
    std::string interfaceName;
    std::string operation;
    bool returnsObject = false;  ///< or a text
    bool returnsNumber = false;
    bool returnsText = false;

    std::string Name() const { return interfaceName + "." + operation; }
};

/// A read or a write that the host disturbs.
class Request {
public:
    enum class Kind { Read, Write };

    /// Uses this file; a write goes to a different one.
    Request(refhost::Plugin& plugin, Kind kind, std::filesystem::path file);

    /// "read everything.orvo".
    const std::string& Name() const { return name_; }
    bool IsWrite() const { return kind_ == Kind::Write; }
    /// The result of an undisturbed run, and the result of a failure.
    tses::SessionResult Undisturbed() const { return undisturbed_; }
    tses::SessionResult Failure() const;
    /// The calls of an undisturbed run.
    const std::vector<HostCall>& Calls() const { return calls_; }

    /// Runs the request and returns the problems that it left: a wrong result, a damaged file (it
    /// must be whole, old or new), leaked host objects, or failure of the same request without
    /// disturbance.
    std::vector<std::string> Disturb(const refhost::Interceptor& interceptor,
                                     tses::SessionResult expected) const;

    /// Inspects the session in the file that a disturbed write saved.
    using Inspector = std::function<std::vector<std::string>(const orvo::Session& session)>;
    std::vector<std::string> Disturb(const refhost::Interceptor& interceptor,
                                     tses::SessionResult expected,
                                     const Inspector& inspector) const;

private:
    tses::SessionResult Run(const refhost::Recorder::Options& options, orvo::Session& session,
                            const std::filesystem::path& target) const;
    std::vector<std::string> Judge(tses::SessionResult result, const orvo::Session& session,
                                   const std::filesystem::path& target) const;

    refhost::Plugin& plugin_;
    Kind kind_;
    std::filesystem::path file_;
    std::string name_;
    orvo::Session expected_;  // the result of an undisturbed read
    std::string written_;     // the file of an undisturbed write
    tses::SessionResult undisturbed_ = tses::SessionResult::Ok;
    std::vector<HostCall> calls_;
};

/// Reads and writes of the golden sessions, and reads of a malformed and of a missing session.
std::vector<Request> Requests(refhost::Plugin& plugin, const Options& options,
                              const TemporaryFolder& folder);

/// Applies a decision to one call of a request and leaves the others alone.
refhost::Interceptor AtCall(std::uint64_t number, refhost::CallDecision decision);

}  // namespace test
