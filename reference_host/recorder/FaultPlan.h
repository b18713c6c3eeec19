#pragma once

#include <exception>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "reference_host/recorder/CallRecord.h"

namespace refhost {

/// What is to become of a call.
struct CallDecision {
    enum class Kind {
        Forward,     ///< the host answers it
        ReturnNull,  ///< null in place of a host object or host string; the host is not asked
        Throw,       ///< `exception` comes out of it; the host is not asked
    };
    Kind kind = Kind::Forward;
    std::exception_ptr exception;

    static CallDecision Forward() { return {}; }
    static CallDecision ReturnNull() { return {Kind::ReturnNull, nullptr}; }
    static CallDecision Throw(std::exception_ptr exception) {
        return {Kind::Throw, std::move(exception)};
    }
};

/// Is asked before each call, whose results are not there yet. `ReturnNull` counts as `Forward`
/// where the operation returns neither a host object nor a host string.
using Interceptor = std::function<CallDecision(const CallRecord& call)>;

/// An interceptor that lets named operations fail, every time they are called. A name is that of
/// the interface which declares the operation, a point, and that of the operation:
/// "IEditSession.GetFile".
class FaultPlan {
public:
    /// Lets the operation return null. Throws `std::invalid_argument`, with a message that says
    /// what can be named, for a name of no operation that returns a host object or host string.
    void ReturnNull(std::string_view operation);

    /// Lets the operation throw. Throws `std::invalid_argument` for a name of no operation.
    void Throw(std::string_view operation, std::exception_ptr exception);

    CallDecision operator()(const CallRecord& call) const;

private:
    std::map<std::string, CallDecision, std::less<>> decisions_;
};

}  // namespace refhost
