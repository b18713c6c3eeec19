#pragma once

#include <string>

#include <orvo/Interchange.h>

/// What a conversion changes, for people and programs.
namespace cli {

/// A line for each fact, and for each kind of thing that is lost by nature.
std::string ListFacts(const orvo::InterchangeReport& report);

/// "values: 3 lost, 1 guessed, 40 without a place in such a file", or "nothing lost".
std::string Summarize(const orvo::InterchangeReport& report);

/// A JSON object with `facts`, `counts` and `lostByNature`.
std::string ReportAsJson(const orvo::InterchangeReport& report);

}  // namespace cli
