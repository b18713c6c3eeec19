#include "platform/kelcore/File.h"

#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "platform/kelcore/FileReplacement.h"
#include "platform/kelcore/Paths.h"

namespace kelcore {
namespace {

std::string CannotWrite(std::string_view reason) {
    std::string message = "cannot write \"";
    message.append(file_exception::kPathPlaceholder).append("\": ").append(reason);
    return message;
}

/// The path for system calls. Empty, which every system call rejects, if the path contains a zero:
/// the system would cut it there.
std::string SystemPath(std::u16string_view path) {
    return path.find(u'\0') == std::u16string_view::npos ? PathToBytes(path) : std::string();
}

}  // namespace

file_exception::file_exception(const std::string& message, int systemError)
    : std::runtime_error(message), systemError_(systemError) {}

std::string file_exception::MessageFor(std::u16string_view path) const {
    std::string message = what();
    const std::size_t place = message.find(kPathPlaceholder);
    if (place != std::string::npos) {
        message.replace(place, kPathPlaceholder.size(), PathToBytes(PathForMessage(path)));
    }
    return message;
}

File::File(std::u16string_view path)
    : fullPath_(FileUtils::PrepAsLongPathName(path)), systemPath_(SystemPath(fullPath_)) {
    if (fullPath_.starts_with(u'/') && fullPath_.find(u"/..") != std::u16string::npos) {
        fullPath_ = MakeFileFromPath(fullPath_, {});
    }
}

File::~File() = default;
File::File(File&&) noexcept = default;
File& File::operator=(File&&) noexcept = default;

bool File::Exists() const noexcept {
    struct stat status;
    return stat(systemPath_.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool File::IsFolder() const noexcept {
    struct stat status;
    return stat(systemPath_.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool File::IsRegularFile() const noexcept {
    struct stat status;
    return stat(systemPath_.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

void File::Create() {
    if (systemPath_.empty()) {
        throw file_exception(CannotWrite("this path cannot name a file"), ENOENT);
    }
    replacement_.reset();
    replacement_ = std::make_unique<FileReplacement>(systemPath_);
}

OPlatformByteStream::OPlatformByteStream(File& file) : replacement_(std::move(file.replacement_)) {
    if (!replacement_) {
        throw file_exception(CannotWrite("it was not created before it was opened"), 0);
    }
}

OPlatformByteStream::~OPlatformByteStream() = default;

FileReplacement& OPlatformByteStream::Replacement() const {
    if (!replacement_) {
        throw file_exception(CannotWrite("its stream is closed, or failed before"), 0);
    }
    return *replacement_;
}

std::string OPlatformByteStream::TemporaryPath() const {
    return Replacement().TemporaryPath();
}

void OPlatformByteStream::WriteBlock(const void* data, std::size_t size) {
    try {
        Replacement().Write(data, size);
    } catch (...) {
        // A partly written file must never replace the old one.
        replacement_.reset();
        throw;
    }
}

void OPlatformByteStream::Close() {
    Replacement();
    // A failed close is final: the system reports a lost write only once, so a second attempt would
    // prove nothing.
    const std::unique_ptr<FileReplacement> last = std::move(replacement_);
    last->Commit();
}

}  // namespace kelcore
