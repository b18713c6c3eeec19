#include "toolkit/scan/LibraryUse.h"

#include <xercesc/util/PlatformUtils.hpp>

namespace toolkit {

LibraryUse::LibraryUse() {
    xercesc::XMLPlatformUtils::Initialize();
}

LibraryUse::~LibraryUse() {
    xercesc::XMLPlatformUtils::Terminate();
}

}  // namespace toolkit
