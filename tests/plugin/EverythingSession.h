#pragma once

#include <string>

#include <orvo/Model.h>

namespace test {

/// A session of which a file keeps every value, and whose file has every element and attribute that
/// the writer knows. Its media lie in `folder`, which ends with a slash.
orvo::Session EverythingSession(const std::string& folder);

}  // namespace test
