#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace bench {

/// The bytes of a file; empty if it cannot be opened.
inline std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace bench
