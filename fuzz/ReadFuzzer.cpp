#include <cstddef>
#include <cstdint>

#include "fuzz/PluginUnderTest.h"

// Any bytes as a session file: whatever they are, the plug-in returns, and gives back all it was
// given.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ReadDocument({reinterpret_cast<const char*>(data), size});
    return 0;
}
