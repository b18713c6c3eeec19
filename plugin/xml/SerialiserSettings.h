#pragma once

#include <xercesc/dom/DOMConfiguration.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <initializer_list>

namespace tses {

/// Makes the serialiser indent and write a byte order mark and an XML declaration, each if it can.
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
