#include "plugin/xml/SessionInputSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "platform/kelcore/Paths.h"

namespace tses {
namespace {

/// Checked in advance: the parser takes the first bytes while it makes its reader, and loses memory
/// if that fails.
bool CanBeRead(int descriptor) {
    char first = 0;
    return ::pread(descriptor, &first, sizeof first, 0) >= 0 || errno == EINTR;
}

}  // namespace

class SessionInputSource::Stream final : public xercesc::BinInputStream {
public:
    explicit Stream(const SessionInputSource& source) : source_(source) { source_.stream_ = this; }
    ~Stream() override {
        source_.stream_ = nullptr;
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// Opens the source's file. Returns false if it is not a regular file or cannot be read.
    bool Open() {
        // Checked before opening as well, because opening affects a pipe or a device.
        struct stat status {};
        if (::stat(source_.systemPath_.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
            return false;
        }
        descriptor_ =
            ::open(source_.systemPath_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode) ||
            !CanBeRead(descriptor_)) {
            return false;
        }
        source_.watch_.Opened(descriptor_, status);
        return true;
    }

    XMLFilePos curPos() const override { return position_; }

    XMLSize_t readBytes(XMLByte* buffer, XMLSize_t size) override {
        for (;;) {
            const ssize_t got = ::read(descriptor_, buffer, size);
            if (got >= 0) {
                position_ += static_cast<XMLFilePos>(got);
                source_.watch_.Received(buffer, static_cast<std::size_t>(got));
                return static_cast<XMLSize_t>(got);
            }
            if (errno != EINTR) {
                ThrowXMLwithMemMgr(xercesc::XMLPlatformUtilsException,
                                   xercesc::XMLExcepts::File_CouldNotReadFromFile,
                                   xercesc::XMLPlatformUtils::fgMemoryManager);
            }
        }
    }

    const XMLCh* getContentType() const override { return nullptr; }

private:
    const SessionInputSource& source_;
    int descriptor_ = -1;
    XMLFilePos position_ = 0;
};

SessionInputSource::SessionInputSource(const std::u16string& path, DocumentWatch& watch)
    : LocalFileInputSource(path.c_str()), systemPath_(kelcore::PathToBytes(path)), watch_(watch) {}

SessionInputSource::~SessionInputSource() {
    delete stream_;
}

xercesc::BinInputStream* SessionInputSource::makeStream() const {
    auto stream = std::make_unique<Stream>(*this);
    return stream->Open() ? stream.release() : nullptr;
}

}  // namespace tses
