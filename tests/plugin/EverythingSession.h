#pragma once

#include <string>

#include "reference_host/model/Session.h"

namespace test {

/// A session of which a file keeps every value, and whose file has every element and attribute that
/// the writer knows. Its media lie in `folder`, which ends with a slash.
refhost::model::Session EverythingSession(const std::u16string& folder);

}  // namespace test
