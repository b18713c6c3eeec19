#include "fuzz/PluginUnderTest.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/LiveNodes.h"

namespace fuzz {
namespace {

/// Uses memory instead of a disk if possible: the disk is not under test.
class SessionFolder {
public:
    SessionFolder() {
        std::string pattern = (std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp") +
                              std::string("/orvo-fuzz-XXXXXX");
        if (::mkdtemp(pattern.data()) == nullptr) {
            Fail("cannot create a folder for sessions");
        }
        path_ = pattern;
    }
    ~SessionFolder() { std::filesystem::remove_all(path_); }
    SessionFolder(const SessionFolder&) = delete;
    SessionFolder& operator=(const SessionFolder&) = delete;

    std::filesystem::path Session() const { return path_ / "session.orvo"; }

private:
    std::filesystem::path path_;
};

/// Returns an empty string if the file does not exist.
std::string ContentOf(const std::filesystem::path& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    std::string content(error ? 0 : static_cast<std::size_t>(size), '\0');
    std::ifstream(path, std::ios::binary)
        .read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
}

void CheckNothingIsHeld(std::size_t before) {
    if (refhost::LiveNodes() != before) {
        Fail(std::to_string(refhost::LiveNodes() - before) + " host objects leaked");
    }
}

}  // namespace

void Fail(const std::string& what) {
    std::fprintf(stderr, "fuzz: %s\n", what.c_str());
    std::abort();
}

refhost::Plugin& LoadedPlugin() {
    static const std::unique_ptr<refhost::Plugin> plugin = [] {
        refhost::UseFeatureDefaults();
        return std::make_unique<refhost::Plugin>();
    }();
    return *plugin;
}

MemoryFile::MemoryFile(std::string_view content)
    : descriptor_(::memfd_create("session", MFD_CLOEXEC)) {
    while (!content.empty()) {
        const ssize_t count = ::write(descriptor_, content.data(), content.size());
        if (count <= 0) {
            Fail("cannot create a file in memory");
        }
        content.remove_prefix(static_cast<std::size_t>(count));
    }
}

MemoryFile::~MemoryFile() {
    ::close(descriptor_);
}

std::u16string MemoryFile::Path() const {
    return kelcore::AsciiToUTF16("/proc/self/fd/" + std::to_string(descriptor_));
}

refhost::ReadResult ReadDocument(std::string_view document) {
    refhost::Plugin& plugin = LoadedPlugin();
    const std::size_t before = refhost::LiveNodes();
    const MemoryFile file(document);
    refhost::ReadResult read = refhost::ReadSession(plugin, file.Path());
    if (read.result != tses::SessionResult::Ok && read.result != tses::SessionResult::ReadFailed) {
        Fail("unexpected result of a read: " + std::to_string(static_cast<int>(read.result)));
    }
    CheckNothingIsHeld(before);
    return read;
}

Saved SaveSession(const orvo::Session& session) {
    static const SessionFolder folder;
    refhost::Plugin& plugin = LoadedPlugin();
    const std::size_t before = refhost::LiveNodes();
    const std::u16string path = kelcore::PathFromBytes(folder.Session().string());
    const tses::SessionResult result = refhost::WriteSession(plugin, path, session).result;
    CheckNothingIsHeld(before);
    return {result, ContentOf(folder.Session())};
}

}  // namespace fuzz
