#pragma once

#include <vector>

#include "reference_host/model/Session.h"

namespace test {

/// Sessions with any value in any field, the same in every run: also such as no file can keep.
std::vector<refhost::model::Session> AnySessions();

/// The same as they come back from a file.
std::vector<refhost::model::Session> StoredSessions();

}  // namespace test
