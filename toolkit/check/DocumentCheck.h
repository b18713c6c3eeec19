#pragma once

#include <string>
#include <string_view>

#include "format/Element.h"
#include "toolkit/DocumentScan.h"
#include "toolkit/check/Codes.h"

namespace toolkit {

/// The kind of a finding, and how it is worded.
struct DocumentFinding {
    Code code;
    std::string what;
};

/// Words what a session loses when it is read and saved.
/// @param name   the element's, without its prefix
/// @param value  the attribute's, if one is meant
DocumentFinding Word(const NotCarried& loss, const tses::Element* kind, std::u16string_view name,
                     std::u16string_view value);

}  // namespace toolkit
