#include <xercesc/util/PlatformUtils.hpp>

#include "host/Registration.h"
#include "host/SessionInterface.h"

// The floor of loading: a plug-in that only starts the XML library.

extern "C" __attribute__((visibility("default"))) kelcore::int32 SessionInterface(
    kelcore::int32 selector, void* argument) {
    switch (static_cast<tses::SessionSelector>(selector)) {
        case tses::SessionSelector::Initialize:
            xercesc::XMLPlatformUtils::Initialize();
            static_cast<tses::IPlugInRegistrar*>(argument)->RegisterSaveFormat(u"", nullptr, 0);
            break;
        case tses::SessionSelector::Terminate:
            xercesc::XMLPlatformUtils::Terminate();
            break;
        default:
            break;
    }
    return 0;
}
