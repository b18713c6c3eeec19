#include "reference_host/recorder/FaultPlan.h"

#include <fmt/format.h>
#include <algorithm>
#include <stdexcept>
#include <vector>

#include "reference_host/recorder/Operations.h"

namespace refhost {
namespace {

std::string FullName(std::string_view interfaceName, std::string_view operation) {
    return fmt::format("{}.{}", interfaceName, operation);
}

enum class Returns { Anything, Object, Number };

bool DoesReturn(const HostOperation& operation, Returns needed) {
    return needed == Returns::Anything ||
           (needed == Returns::Object ? operation.returnsObject : operation.returnsNumber);
}

// What the plan can name: the operations of the interface before the point, or else all interfaces.
std::string Choices(std::string_view wrongName, Returns needed) {
    const std::string_view interfaceName = wrongName.substr(0, wrongName.find('.'));
    std::vector<std::string_view> operations;
    std::vector<std::string_view> interfaces;
    for (const HostOperation& operation : HostOperations()) {
        if (!DoesReturn(operation, needed)) {
            continue;
        }
        if (operation.interfaceName == interfaceName) {
            operations.push_back(operation.name);
        }
        if (interfaces.empty() || interfaces.back() != operation.interfaceName) {
            interfaces.push_back(operation.interfaceName);
        }
    }
    if (operations.empty()) {
        return fmt::format("Name an operation of {}.", fmt::join(interfaces, ", "));
    }
    return fmt::format("{} has {}.", interfaceName, fmt::join(operations, ", "));
}

std::string_view Described(Returns needed) {
    switch (needed) {
        case Returns::Object:
            return " that returns a host object";
        case Returns::Number:
            return " that returns a number";
        default:
            return "";
    }
}

void Check(std::string_view name, Returns needed) {
    const auto operations = HostOperations();
    const bool known = std::ranges::any_of(operations, [&](const HostOperation& operation) {
        return DoesReturn(operation, needed) &&
               FullName(operation.interfaceName, operation.name) == name;
    });
    if (!known) {
        throw std::invalid_argument(fmt::format("\"{}\" is no operation{}. {}", name,
                                                Described(needed), Choices(name, needed)));
    }
}

}  // namespace

void FaultPlan::ReturnNull(std::string_view operation) {
    Check(operation, Returns::Object);
    decisions_.insert_or_assign(std::string(operation), CallDecision::ReturnNull());
}

void FaultPlan::ReturnNumber(std::string_view operation, std::uint64_t number) {
    Check(operation, Returns::Number);
    decisions_.insert_or_assign(std::string(operation), CallDecision::ReturnNumber(number));
}

void FaultPlan::Throw(std::string_view operation, std::exception_ptr exception) {
    Check(operation, Returns::Anything);
    decisions_.insert_or_assign(std::string(operation), CallDecision::Throw(std::move(exception)));
}

CallDecision FaultPlan::operator()(const CallRecord& call) const {
    if (decisions_.empty()) {
        return CallDecision::Forward();
    }
    const auto found = decisions_.find(FullName(call.interfaceName, call.operation));
    return found == decisions_.end() ? CallDecision::Forward() : found->second;
}

}  // namespace refhost
