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

class RegularFileStream final : public xercesc::BinInputStream {
public:
    RegularFileStream(int descriptor, DocumentWatch& watch)
        : descriptor_(descriptor), watch_(watch) {}
    ~RegularFileStream() override { ::close(descriptor_); }
    RegularFileStream(const RegularFileStream&) = delete;
    RegularFileStream& operator=(const RegularFileStream&) = delete;

    XMLFilePos curPos() const override { return position_; }

    XMLSize_t readBytes(XMLByte* buffer, XMLSize_t size) override {
        for (;;) {
            const ssize_t got = ::read(descriptor_, buffer, size);
            if (got >= 0) {
                position_ += static_cast<XMLFilePos>(got);
                watch_.Received(buffer, static_cast<std::size_t>(got));
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
    int descriptor_;
    DocumentWatch& watch_;
    XMLFilePos position_ = 0;
};

}  // namespace

SessionInputSource::SessionInputSource(const std::u16string& path, DocumentWatch& watch)
    : LocalFileInputSource(path.c_str()), systemPath_(kelcore::PathToBytes(path)), watch_(watch) {}

xercesc::BinInputStream* SessionInputSource::makeStream() const {
    const int descriptor =
        ::open(systemPath_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return nullptr;
    }
    auto stream = std::make_unique<RegularFileStream>(descriptor, watch_);
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return nullptr;
    }
    watch_.Opened(descriptor, status);
    return stream.release();
}

}  // namespace tses
