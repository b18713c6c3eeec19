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
#include "tests/trust/Contract.h"

namespace test {

/// An operation of the host that a request called, by its number among the calls of the request.
struct HostCall {
    std::uint64_t number = 0;
    std::string interfaceName;
    std::string operation;
    bool returnsObject = false;  ///< or a text
    bool returnsNumber = false;
    bool returnsText = false;

    std::string Name() const { return interfaceName + "." + operation; }
};

/// A read or a write that a host disturbs.
class Request {
public:
    enum class Kind { Read, Write };

    /// Works on that file; what is written goes elsewhere.
    Request(refhost::Plugin& plugin, Kind kind, std::filesystem::path file);

    /// "read everything.orvo".
    const std::string& Name() const { return name_; }
    bool IsWrite() const { return kind_ == Kind::Write; }
    /// What it gives when nothing disturbs it, and when it cannot be done.
    tses::SessionResult Undisturbed() const { return undisturbed_; }
    tses::SessionResult Failure() const;
    /// What it calls when nothing disturbs it.
    const std::vector<HostCall>& Calls() const { return calls_; }

    /// Runs it and returns what is wrong with what it left: the result, the file (whole, old or
    /// new), what of the host is held, and whether the same request then works undisturbed.
    std::vector<std::string> Disturb(const refhost::Interceptor& interceptor,
                                     tses::SessionResult expected) const;

    /// Is told of what a disturbed write saved, read again.
    using Inspector =
        std::function<std::vector<std::string>(const refhost::model::Session& session)>;
    std::vector<std::string> Disturb(const refhost::Interceptor& interceptor,
                                     tses::SessionResult expected,
                                     const Inspector& inspector) const;

private:
    tses::SessionResult Run(const refhost::Recorder::Options& options,
                            refhost::model::Session& session,
                            const std::filesystem::path& target) const;
    std::vector<std::string> Judge(tses::SessionResult result,
                                   const refhost::model::Session& session,
                                   const std::filesystem::path& target) const;

    refhost::Plugin& plugin_;
    Kind kind_;
    std::filesystem::path file_;
    std::string name_;
    refhost::model::Session expected_;  // what the undisturbed read leaves
    std::string written_;               // what the undisturbed write saves
    tses::SessionResult undisturbed_ = tses::SessionResult::Ok;
    std::vector<HostCall> calls_;
};

/// Reads and writes of the golden sessions, and the reads of one that is malformed and of one that
/// is missing.
std::vector<Request> Requests(refhost::Plugin& plugin, const Options& options,
                              const TemporaryFolder& folder);

/// A decision for one call of a request, and none for the others.
refhost::Interceptor AtCall(std::uint64_t number, refhost::CallDecision decision);

}  // namespace test
