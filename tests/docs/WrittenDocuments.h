#pragma once

#include <vector>

#include <orvo/Model.h>

namespace test {

/// Sessions with any value in any field, the same in every run: also such as no file can keep.
std::vector<orvo::Session> AnySessions();

/// The same as they come back from a file.
std::vector<orvo::Session> StoredSessions();

}  // namespace test
