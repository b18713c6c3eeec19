#pragma once

#include <xercesc/util/PlatformUtils.hpp>

namespace toolkit {

/// Starts the XML library, which counts its starts, and stops it again.
class LibraryUse {
public:
    LibraryUse() { xercesc::XMLPlatformUtils::Initialize(); }
    ~LibraryUse() { xercesc::XMLPlatformUtils::Terminate(); }
    LibraryUse(const LibraryUse&) = delete;
    LibraryUse& operator=(const LibraryUse&) = delete;
};

}  // namespace toolkit
