#include "tests/support/SourceFolder.h"

namespace test {

std::filesystem::path SourceFolder() {
    return ORVO_SOURCE_DIR;
}

}  // namespace test
