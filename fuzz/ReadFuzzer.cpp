#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/kelcore/Strings.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Plugin.h"
#include "reference_host/Sessions.h"

// Any bytes as a session file: whatever they are, the plug-in returns, and gives back all it was
// given.

namespace {

/// A file in memory that has a path.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : descriptor_(::memfd_create("session", MFD_CLOEXEC)) {
        for (std::size_t written = 0; written < size;) {
            const ssize_t count = ::write(descriptor_, data + written, size - written);
            if (count <= 0) {
                std::perror("ReadFuzzer");
                std::abort();
            }
            written += static_cast<std::size_t>(count);
        }
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::u16string Path() const {
        return kelcore::AsciiToUTF16("/proc/self/fd/" + std::to_string(descriptor_));
    }

private:
    int descriptor_;
};

refhost::Plugin& LoadedPlugin() {
    static const std::unique_ptr<refhost::Plugin> plugin = [] {
        refhost::UseFeatureDefaults();
        return std::make_unique<refhost::Plugin>();
    }();
    return *plugin;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    refhost::Plugin& plugin = LoadedPlugin();
    const std::size_t before = refhost::LiveNodes();
    const MemoryFile file(data, size);
    const tses::SessionResult result = refhost::ReadSession(plugin, file.Path()).result;
    const bool known =
        result == tses::SessionResult::Ok || result == tses::SessionResult::ReadFailed;
    if (!known || refhost::LiveNodes() != before) {
        std::fprintf(stderr, "ReadFuzzer: result %d, %zu host objects left\n",
                     static_cast<int>(result), refhost::LiveNodes() - before);
        std::abort();
    }
    return 0;
}
