#pragma once

#include <string_view>

#include "toolkit/scan/NextBytes.h"
#include "toolkit/scan/ScannedAttributes.h"

namespace toolkit {

/// Takes the tags and texts of a document.
class MarkupHandler {
public:
    /// @param name  without its prefix
    virtual void StartElement(std::u16string_view name, const ScannedAttributes& attributes) = 0;
    virtual void EndElement() = 0;
    /// A part of the text between two tags.
    virtual void Characters(std::u16string_view text) = 0;

protected:
    ~MarkupHandler() = default;
};

/// Reads a document in UTF-8 and XML 1.0 several times faster than the parser, because it relies on
/// another reader to refuse what is not well-formed: of a document that is, it gives what the
/// parser gives. It may take one that is not for well-formed.
/// @returns whether it has read all of the document; false for any other document, and for one with
///          a document type, with names beyond ASCII, or with longer pieces than a reader accepts
bool ReadMarkup(const NextBytes& next, MarkupHandler& handler);

}  // namespace toolkit
