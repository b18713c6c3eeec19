#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

namespace toolkit {

/// A file name that every system accepts: "_" stands for what some do not.
/// @param name  UTF-8
std::string PortableName(std::string_view name);

/// Makes names that differ on every system.
class UniqueNames {
public:
    /// The name, or with a number before its extension if another has it.
    std::string Take(const std::string& name);

private:
    std::unordered_set<std::string> folded_;
};

}  // namespace toolkit
