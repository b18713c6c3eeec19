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

// What may be named: the operations of the interface before the point, or else all interfaces.
std::string Choices(std::string_view wrongName, bool needsObject) {
    const std::string_view interfaceName = wrongName.substr(0, wrongName.find('.'));
    std::vector<std::string_view> operations;
    std::vector<std::string_view> interfaces;
    for (const HostOperation& operation : HostOperations()) {
        if (needsObject && !operation.returnsObject) {
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

void Check(std::string_view name, bool needsObject) {
    const auto operations = HostOperations();
    const bool known = std::ranges::any_of(operations, [&](const HostOperation& operation) {
        return (operation.returnsObject || !needsObject) &&
               FullName(operation.interfaceName, operation.name) == name;
    });
    if (!known) {
        throw std::invalid_argument(fmt::format("\"{}\" is no operation{}. {}", name,
                                                needsObject ? " that returns a host object" : "",
                                                Choices(name, needsObject)));
    }
}

}  // namespace

void FaultPlan::ReturnNull(std::string_view operation) {
    Check(operation, true);
    decisions_.insert_or_assign(std::string(operation), CallDecision::ReturnNull());
}

void FaultPlan::Throw(std::string_view operation, std::exception_ptr exception) {
    Check(operation, false);
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
