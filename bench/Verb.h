#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace bench {

/// What the chosen verb does once the command line has been read.
using Action = std::function<void()>;

/// Each adds its verb. If the user chooses it, `chosen` becomes its action, which throws a
/// `std::exception` if it cannot measure something.
void AddRead(CLI::App& program, Action& chosen);
void AddWrite(CLI::App& program, Action& chosen);
void AddView(CLI::App& program, Action& chosen);
void AddLife(CLI::App& program, Action& chosen);

}  // namespace bench
