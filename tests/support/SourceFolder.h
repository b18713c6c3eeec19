#pragma once

#include <filesystem>

namespace test {

/// The project's folder, whose documents and examples tests read.
std::filesystem::path SourceFolder();

}  // namespace test
