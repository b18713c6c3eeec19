#pragma once

#include <boost/thread/lock_types.hpp>
#include <boost/thread/recursive_mutex.hpp>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "platform/kelcore/Types.h"
#include "plugin/xml/AttributeMap.h"
#include "plugin/xml/SessionDocument.h"

namespace tses {

/// Makes a writer fail on purpose, so that tests can check saves that fail in ways they cannot
/// cause.
struct WriterFault {
    static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
    enum class Serialiser { Works, ReportsFailure, WritesNothing };

    /// The operation, counted from 0, that reports failure as if the document had refused it.
    std::size_t atOperation = kNever;
    Serialiser serialiser = Serialiser::Works;
};

/// Builds a session document and saves it. The document element "orvo" exists from the beginning.
/// New content goes into the current element, which is the document element at first. Every
/// operation returns whether it succeeded. Without a document, because the XML library was not
/// started, each one fails and does nothing.
///
/// No character makes an operation fail. A reader gets back every character, with U+FFFD in place
/// of the few that XML cannot express; `CarriableText.h` says which.
class SessionXMLWriter {
public:
    /// `makeDocument` makes no difference to what is saved.
    SessionXMLWriter(std::u16string path, WriterFault fault, DocumentMaker makeDocument);
    ~SessionXMLWriter();
    SessionXMLWriter(const SessionXMLWriter&) = delete;
    SessionXMLWriter& operator=(const SessionXMLWriter&) = delete;

    /// Takes the lock that every operation takes. While a thread holds it, its operations need no
    /// atomic instructions for it.
    [[nodiscard]] boost::unique_lock<boost::recursive_mutex> Hold() {
        return boost::unique_lock(lock_);
    }

    /// Whether the document has room for a list of that many items in addition to all lists before
    /// it, for a map of that many channels, or for a block of that many bytes. If not, one trace
    /// line says so, and every operation from then on fails, including the save.
    bool TakesItems(kelcore::uint32 count);
    bool TakesChannels(kelcore::uint32 count);
    bool TakesBlock(kelcore::uint32 bytes);

    /// Sets attributes of the document element.
    bool SetRootAttributes(const AttributeMap& attributes);

    /// Opens a child of the current element and makes it the current one. `name` must be a constant
    /// of `names`. Each success needs one `EndElement`. If the attributes are longer than a reader
    /// accepts, every operation from then on fails, including the save.
    bool StartElement(std::u16string_view name, const AttributeMap& attributes = {});

    /// Appends ordinary text. Some characters make the whole document XML 1.1 (`NeedsXml11`).
    bool Text(std::u16string_view text);

    /// Appends a CDATA section, for encoded blocks and embedded metadata. If one section cannot
    /// hold the text, appends several, with references between them.
    bool Characters(std::u16string_view text);

    /// Makes the parent of the current element the current one. Returns false and changes nothing
    /// at the document element, which has no parent.
    bool EndElement();

    /// Serialises the document in memory and then replaces the file with it. Returns false
    /// - if the document cannot be serialised; the file is then not touched;
    /// - if the file cannot be written; it then stays as it was, unless only its folder could not
    ///   be flushed to the disk: then the new file is already in place;
    /// - if the serialiser claims success but gives no bytes; the file is then empty.
    bool Save();

private:
    struct State;

    bool Step();
    bool Refuse(std::string_view reason);
    bool TakesAttributes(const AttributeMap& attributes);

    std::unique_ptr<State> state_;
    boost::recursive_mutex lock_;
};

}  // namespace tses
