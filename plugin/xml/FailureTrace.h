#pragma once

#include <stdexcept>
#include <string_view>

namespace tses {

/// Ends a parse for a reason that has already been reported.
class ReportedFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Traces the message of the exception that is being handled; ignores a `ReportedFailure`. Call it
/// only in a catch clause.
void TraceFailure(std::string_view category) noexcept;

}  // namespace tses
