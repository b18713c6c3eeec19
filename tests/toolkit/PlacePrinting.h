#pragma once

#include <ostream>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// For failures of tests.
inline void PrintTo(const Place& place, std::ostream* stream) {
    *stream << place.line << ":" << place.column;
}

}  // namespace toolkit
