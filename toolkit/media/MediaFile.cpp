#include "toolkit/media/MediaFile.h"

#include "platform/kelcore/File.h"
#include "platform/kelcore/Strings.h"

namespace toolkit {

bool IsMediaFile(const std::string& path) {
    return kelcore::File(kelcore::UTF8to16(path)).IsRegularFile();
}

}  // namespace toolkit
