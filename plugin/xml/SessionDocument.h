#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "platform/kelcore/Types.h"
#include "plugin/xml/AttributeMap.h"

namespace tses {

/// A session document while it is written. The document element "orvo" is open from the beginning;
/// new content goes into the innermost open element. There are two implementations, which give the
/// same bytes: one builds a DOM and lets the XML library serialise it, the other writes the text of
/// each element as soon as it is known.
///
/// `CarriableText.h` says which characters a reader gets back. Names must be constants of `names`.
/// The DOM throws a `xercesc::DOMException` if the XML library refuses something. After any other
/// exception, which is lack of memory, a document can only be destroyed.
class SessionDocument {
public:
    virtual ~SessionDocument() = default;

    /// Sets attributes of the document element, or replaces their values.
    virtual void SetRootAttributes(const AttributeMap& attributes) = 0;

    /// Opens a child of the innermost open element.
    virtual void StartElement(std::u16string_view name, const AttributeMap& attributes) = 0;

    /// Appends ordinary text. It may make the whole document XML 1.1 (`NeedsXml11`).
    virtual void Text(std::u16string_view text) = 0;

    /// Appends a CDATA section, or several if one cannot hold the text.
    virtual void Characters(std::u16string_view text) = 0;

    /// Closes the innermost open element, which must not be the document element.
    virtual void EndElement() = 0;

    /// The document as a file, with every open element closed; valid until the next call. Every
    /// text in which a character was replaced gives one trace line. No value if the XML library
    /// cannot serialise the document.
    virtual std::optional<std::span<const kelcore::byte>> Serialise() = 0;

protected:
    SessionDocument() = default;
    SessionDocument(const SessionDocument&) = default;
    SessionDocument& operator=(const SessionDocument&) = default;
};

/// Makes a document; null if the XML library was not started, even if the document can do without.
using DocumentMaker = std::unique_ptr<SessionDocument> (*)();

std::unique_ptr<SessionDocument> MakeDomDocument();
std::unique_ptr<SessionDocument> MakeStreamedDocument();
/// A DOM that is built with the public calls of the XML library, whatever the build uses.
std::unique_ptr<SessionDocument> MakePublicDomDocument();

}  // namespace tses
