#pragma once

#include <string>

#include <orvo/Model.h>

namespace test {

/// A session that a file keeps completely, and whose file has every element and attribute that the
/// writer knows. Its media are in `folder`, which ends with a slash.
orvo::Session EverythingSession(const std::string& folder);

}  // namespace test
