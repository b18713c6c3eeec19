#include <cstddef>
#include <cstdint>

#include "fuzz/PluginUnderTest.h"

// Feeds arbitrary bytes to the plug-in as a session file. The read must return and must release
// every host object.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ReadDocument({reinterpret_cast<const char*>(data), size});
    return 0;
}
