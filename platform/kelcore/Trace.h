#pragma once

#include <functional>
#include <string_view>

/// Diagnostic lines by category. The switches and the output belong to the process: the host and
/// its plug-ins share them.
namespace kelcore::trace {

/// The categories in which the plug-in reports why a read or a save failed. These two are on by
/// default, all others off.
inline constexpr std::string_view kReaderCategory = "app::XMLReader";
inline constexpr std::string_view kWriterCategory = "app::XMLWriter";

bool IsEnabled(std::string_view category);
void SetEnabled(std::string_view category, bool enabled);

/// Writes one line (UTF-8) if the category is on. Lines go to standard error, prefixed with time
/// and category, unless `SetOutput` was called. If memory runs out or the output throws, the line
/// is dropped.
void Write(std::string_view category, std::string_view text) noexcept;

/// Receives the lines, on the thread that writes them, concurrently if several threads write. It
/// may call every function here. An empty function restores standard error and needs no memory.
using Output = std::function<void(std::string_view category, std::string_view text)>;

/// Returns the previous output, which is empty if lines went to standard error. If it throws
/// because memory runs out, the previous output stays.
Output SetOutput(Output output);

}  // namespace kelcore::trace
