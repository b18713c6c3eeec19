#pragma once

#include <string_view>
#include <vector>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include "toolkit/scan/ScannedAttributes.h"

namespace toolkit {

/// The parser's texts may be null; null gives an empty view.
inline std::u16string_view ViewOf(const XMLCh* text) {
    return text != nullptr ? std::u16string_view(text) : std::u16string_view();
}

/// Takes the attributes of one tag after the other from the parser.
class ParsedAttributes {
public:
    using List = xercesc::RefVectorOf<xercesc::XMLAttr>;

    /// Valid until the next call, and as long as the parser's list.
    ScannedAttributes Take(const List& list, XMLSize_t count) {
        attributes_.clear();
        for (XMLSize_t i = 0; i < count; ++i) {
            const xercesc::XMLAttr& attribute = *list.elementAt(i);
            attributes_.emplace_back(ViewOf(attribute.getQName()), ViewOf(attribute.getValue()));
        }
        return ScannedAttributes(attributes_);
    }

private:
    std::vector<ScannedAttribute> attributes_;
};

}  // namespace toolkit
