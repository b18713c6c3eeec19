#include "plugin/xml/XercesPlatform.h"

#include <cstdio>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "platform/kelcore/Strings.h"

namespace tses {
namespace {

bool xercesStarted = false;

}  // namespace

bool StartXerces() {
    if (xercesStarted) {
        return true;
    }
    try {
        xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale);
    } catch (const xercesc::XMLException& failure) {
        std::printf(
            "Error during initialization of Xerces XML parser! :\n"
            "Exception message is: \n%s\n",
            TranscodeMessage(failure.getMessage()).c_str());
        return false;
    }
    xercesStarted = true;
    return true;
}

void StopXerces() {
    if (xercesStarted) {
        xercesStarted = false;
        xercesc::XMLPlatformUtils::Terminate();
    }
}

bool IsXercesStarted() noexcept {
    return xercesStarted;
}

std::string TranscodeMessage(const kelcore::char16* message) {
    return message != nullptr ? kelcore::UTF16to8(message) : std::string();
}

}  // namespace tses
