#pragma once

#include <functional>
#include <string_view>

/// Diagnostic lines by category. The switches and the output belong to the process: host and
/// plug-ins share them.
namespace kelcore::trace {

/// The categories in which the plug-in says why a read or a save failed. They are on until somebody
/// switches them off; every other category is off until somebody switches it on.
inline constexpr std::string_view kReaderCategory = "app::XMLReader";
inline constexpr std::string_view kWriterCategory = "app::XMLWriter";

bool IsEnabled(std::string_view category);
void SetEnabled(std::string_view category, bool enabled);

/// Writes one line (UTF-8) if the category is on. Lines go to standard error, with the time and the
/// category in front, unless `SetOutput` was called. A line that cannot be written, because
/// memory runs out or the output throws, is lost: to trace never fails.
void Write(std::string_view category, std::string_view text) noexcept;

/// Who receives the lines, on the thread that writes them, and on several at a time if several
/// write. It may itself call every function here. An empty function restores standard error, which
/// takes no memory.
using Output = std::function<void(std::string_view category, std::string_view text)>;

/// Returns the former output, empty if the lines went to standard error. If it throws, because
/// memory runs out, the former output stays.
Output SetOutput(Output output);

}  // namespace kelcore::trace
