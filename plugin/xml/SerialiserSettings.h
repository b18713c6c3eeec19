#pragma once

#include <xercesc/dom/DOMConfiguration.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace tses {

/// Has a document serialised indented, with a byte order mark and an XML declaration: each as far
/// as the serialiser can.
inline void ConfigureSerialiser(xercesc::DOMConfiguration& configuration) {
    for (const XMLCh* const setting :
         {xercesc::XMLUni::fgDOMWRTFormatPrettyPrint, xercesc::XMLUni::fgDOMWRTBOM,
          xercesc::XMLUni::fgDOMXMLDeclaration}) {
        if (configuration.canSetParameter(setting, true)) {
            configuration.setParameter(setting, true);
        }
    }
}

}  // namespace tses
