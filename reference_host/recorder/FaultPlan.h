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

/// What happens to a call.
struct CallDecision {
    enum class Kind {
        Forward,       ///< the host answers it
        ReturnNull,    ///< null in place of a host object or host string; the host is not asked
        ReturnNumber,  ///< `number` in place of a number or truth value; the host is not asked
        ReturnText,    ///< `text` in place of a host string, unread; the host is not asked
        Throw,         ///< the call throws `exception`; the host is not asked
    };
    Kind kind = Kind::Forward;
    std::exception_ptr exception{};
    std::uint64_t number = 0;           ///< converted to the type of the result
    tses::IHostString* text = nullptr;  ///< belongs to the interceptor

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

/// Decides before each call; the record has no results yet. `ReturnNull` counts as `Forward` if the
/// operation returns neither a host object nor a host string, `ReturnText` if it returns no host
/// string, and `ReturnNumber` if it returns either of them. With `ReturnNumber`, an operation that
/// returns nothing does nothing.
using Interceptor = std::function<CallDecision(const CallRecord& call)>;

/// An interceptor that makes named operations fail, every time they are called. A name consists of
/// the interface that declares the operation, a point and the operation: "IEditSession.GetFile".
class FaultPlan {
public:
    /// Makes the operation return null. Throws `std::invalid_argument`, with a message that says
    /// which names are valid, unless the name is that of an operation that returns a host object or
    /// host string.
    void ReturnNull(std::string_view operation);

    /// Makes the operation return that number. Throws `std::invalid_argument`, as above, unless the
    /// name is that of an operation that returns a number or truth value.
    void ReturnNumber(std::string_view operation, std::uint64_t number);

    /// Makes the operation throw. Throws `std::invalid_argument` if no operation has that name.
    void Throw(std::string_view operation, std::exception_ptr exception);

    CallDecision operator()(const CallRecord& call) const;

private:
    std::map<std::string, CallDecision, std::less<>> decisions_;
};

}  // namespace refhost
