#pragma once

#include <orvo/Model.h>

namespace test {

/// Compares what a DAWproject file carries of two sessions: the one that was written, and the one
/// that was read without the entry of our own. Ids may differ, levels by rounding.
void ExpectCarried(const orvo::Session& written, const orvo::Session& read);

}  // namespace test
