#pragma once

#include <string>

#include "reference_host/recorder/CallRecord.h"

namespace refhost {

/// One line without its end, for a stream of JSON lines:
///
///     {"seq": 12, "object": "IEditSession#1", "call": "GetFile", "args": [3], "returns":
///     "IEditFile#4"}
///
/// "returns" is there only if the operation returns a host object; it is null if it returned null.
/// Texts are JSON strings in UTF-8; an unpaired surrogate in them is an escape. Real numbers are
/// the shortest text that reads back to the same value; those that JSON has no number for are the
/// strings "NaN", "Infinity" and "-Infinity". A block of bytes is {"bytes": 3, "base64": "AAEC"}.
std::string FormatCallAsJson(const CallRecord& call);

}  // namespace refhost
