#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "host/HostObject.h"
#include "reference_host/recorder/CallRecord.h"

namespace refhost {

/// What is to become of a call.
struct CallDecision {
    enum class Kind {
        Forward,       ///< the host answers it
        ReturnNull,    ///< null in place of a host object or host string; the host is not asked
        ReturnNumber,  ///< `number` in place of a number or truth value; the host is not asked
        ReturnText,    ///< `text` in place of a host string; neither it nor the host is asked
        Throw,         ///< `exception` comes out of it; the host is not asked
    };
    Kind kind = Kind::Forward;
    std::exception_ptr exception{};
    std::uint64_t number = 0;           ///< converted to the type of the result
    tses::IHostString* text = nullptr;  ///< belongs to whoever decides

    static CallDecision Forward() { return {}; }
    static CallDecision ReturnNull() { return {.kind = Kind::ReturnNull}; }
    static CallDecision ReturnNumber(std::uint64_t number) {
        return {.kind = Kind::ReturnNumber, .number = number};
    }
    static CallDecision ReturnText(tses::IHostString& text) {
        return {.kind = Kind::ReturnText, .text = &text};
    }
    static CallDecision Throw(std::exception_ptr exception) {
        return {.kind = Kind::Throw, .exception = std::move(exception)};
    }
};

/// Is asked before each call, whose results are not there yet. `ReturnNull` counts as `Forward`
/// where the operation returns neither a host object nor a host string, `ReturnText` where it
/// returns no host string, and `ReturnNumber` where it returns either; with `ReturnNumber` an
/// operation that returns nothing does nothing.
using Interceptor = std::function<CallDecision(const CallRecord& call)>;

/// An interceptor that lets named operations fail, every time they are called. A name is that of
/// the interface which declares the operation, a point, and that of the operation:
/// "IEditSession.GetFile".
class FaultPlan {
public:
    /// Lets the operation return null. Throws `std::invalid_argument`, with a message that says
    /// what can be named, for a name of no operation that returns a host object or host string.
    void ReturnNull(std::string_view operation);

    /// Lets the operation return that number. Throws `std::invalid_argument`, as above, for a name
    /// of no operation that returns a number or truth value.
    void ReturnNumber(std::string_view operation, std::uint64_t number);

    /// Lets the operation throw. Throws `std::invalid_argument` for a name of no operation.
    void Throw(std::string_view operation, std::exception_ptr exception);

    CallDecision operator()(const CallRecord& call) const;

private:
    std::map<std::string, CallDecision, std::less<>> decisions_;
};

}  // namespace refhost
