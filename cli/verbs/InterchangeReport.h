#pragma once

#include <string>

#include <orvo/Interchange.h>

/// What a conversion changes, for people and programs.
namespace cli {

/// A line for each fact.
std::string ListFacts(const orvo::InterchangeReport& report);

/// "3 lost, 1 guessed; lost by nature: 2 takes, 1 views", or "nothing lost".
std::string Summarize(const orvo::InterchangeReport& report);

/// A JSON object with `facts`, `counts` and `lostByNature`.
std::string ReportAsJson(const orvo::InterchangeReport& report);

}  // namespace cli
