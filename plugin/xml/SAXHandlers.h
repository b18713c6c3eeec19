#pragma once

#include <string_view>

#include "platform/kelcore/Types.h"
#include "plugin/xml/TagAttributes.h"

namespace tses {

/// Receives the events of one parse. Every text is a view that lives as long as the call.
class SAXContentHandler {
public:
    virtual void StartDocument() = 0;
    virtual void EndDocument() = 0;
    virtual void StartElementEvent(std::u16string_view uri, std::u16string_view localName,
                                   std::u16string_view qualifiedName,
                                   const TagAttributes& attributes) = 0;
    virtual void EndElementEvent(std::u16string_view uri, std::u16string_view localName,
                                 std::u16string_view qualifiedName) = 0;
    /// A piece of character data; one text may come in several pieces.
    virtual void CharactersEvent(std::u16string_view text) = 0;

    virtual ~SAXContentHandler() = default;

protected:
    SAXContentHandler() = default;
    SAXContentHandler(const SAXContentHandler&) = default;
    SAXContentHandler& operator=(const SAXContentHandler&) = default;
};

/// Receives what the parser finds wrong, with the place: lines and columns count from 1, an absent
/// identifier is empty. What an operation throws ends the parse.
class SAXErrorHandler {
public:
    virtual void Warning(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
                         std::u16string_view systemId, std::u16string_view message) = 0;
    virtual void Error(kelcore::uint64 line, kelcore::uint64 column, std::u16string_view publicId,
                       std::u16string_view systemId, std::u16string_view message) = 0;
    virtual void FatalError(kelcore::uint64 line, kelcore::uint64 column,
                            std::u16string_view publicId, std::u16string_view systemId,
                            std::u16string_view message) = 0;

    virtual ~SAXErrorHandler() = default;

protected:
    SAXErrorHandler() = default;
    SAXErrorHandler(const SAXErrorHandler&) = default;
    SAXErrorHandler& operator=(const SAXErrorHandler&) = default;
};

}  // namespace tses
