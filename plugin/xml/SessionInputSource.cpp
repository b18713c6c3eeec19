#include "plugin/xml/SessionInputSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "platform/kelcore/Paths.h"

namespace tses {
namespace {

class RegularFileStream final : public xercesc::BinInputStream {
public:
    explicit RegularFileStream(int descriptor) : descriptor_(descriptor) {}
    ~RegularFileStream() override { ::close(descriptor_); }
    RegularFileStream(const RegularFileStream&) = delete;
    RegularFileStream& operator=(const RegularFileStream&) = delete;

    XMLFilePos curPos() const override { return position_; }

    XMLSize_t readBytes(XMLByte* buffer, XMLSize_t size) override {
        for (;;) {
            const ssize_t got = ::read(descriptor_, buffer, size);
            if (got >= 0) {
                position_ += static_cast<XMLFilePos>(got);
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
    XMLFilePos position_ = 0;
};

bool IsRegularFile(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

SessionInputSource::SessionInputSource(const std::u16string& path)
    : LocalFileInputSource(path.c_str()), systemPath_(kelcore::PathToBytes(path)) {}

xercesc::BinInputStream* SessionInputSource::makeStream() const {
    const int descriptor =
        ::open(systemPath_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return nullptr;
    }
    if (!IsRegularFile(descriptor)) {
        ::close(descriptor);
        return nullptr;
    }
    return new (xercesc::XMLPlatformUtils::fgMemoryManager) RegularFileStream(descriptor);
}

}  // namespace tses
