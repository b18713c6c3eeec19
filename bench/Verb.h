#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace bench {

/// What the chosen verb does once the command line has been read.
using Action = std::function<void()>;

/// Each adds its verb. When the verb is chosen, `chosen` becomes its action, which throws a
/// `std::exception` if something cannot be measured.
void AddRead(CLI::App& program, Action& chosen);
void AddWrite(CLI::App& program, Action& chosen);
void AddLife(CLI::App& program, Action& chosen);

}  // namespace bench
