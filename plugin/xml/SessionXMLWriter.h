#pragma once

#include <boost/thread/recursive_mutex.hpp>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "platform/kelcore/Types.h"
#include "plugin/xml/AttributeMap.h"
#include "plugin/xml/DocumentNodes.h"

namespace tses {

/// Lets a writer fail where it otherwise fails only in need: how a save behaves then is beyond the
/// reach of a test.
struct WriterFault {
    static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
    enum class Serialiser { Works, ReportsFailure, WritesNothing };

    /// The operation, counted from 0, that reports failure as if the document had refused it.
    std::size_t atOperation = kNever;
    Serialiser serialiser = Serialiser::Works;
};

/// Builds a session document and saves it. The document element "orvo" stands from the beginning;
/// new content goes into the current element, which is the document element at first. Every
/// operation says whether it succeeded, and fails without effect when there is no document (the XML
/// library was not started).
///
/// No character makes an operation fail. A reader gets each of them back, or U+FFFD in the place of
/// the few that XML has no means for; `CarriableText.h` says which.
class SessionXMLWriter {
public:
    /// `makeNodes` makes no difference to what is saved.
    explicit SessionXMLWriter(std::u16string path, WriterFault fault = {},
                              NodeMaker makeNodes = kNodeMaker);
    ~SessionXMLWriter();
    SessionXMLWriter(const SessionXMLWriter&) = delete;
    SessionXMLWriter& operator=(const SessionXMLWriter&) = delete;

    /// Whether the document has room for a list of that many items beside all lists before it, for
    /// a map of that many channels, and for a block of that many bytes. If not, one trace line says
    /// so, and the save fails whatever becomes of the element: so does every operation from there
    /// on.
    bool TakesItems(kelcore::uint32 count);
    bool TakesChannels(kelcore::uint32 count);
    bool TakesBlock(kelcore::uint32 bytes);

    /// Sets attributes of the document element.
    bool SetRootAttributes(const AttributeMap& attributes);

    /// Opens a child of the current element and makes it the current one. `name` is a constant of
    /// `names`. Each success wants one `EndElement`. Attributes that are longer than a reader takes
    /// make the save fail, as a list does for which there is no room.
    bool StartElement(std::u16string_view name, const AttributeMap& attributes = {});

    /// Appends ordinary text. A control character in it (below U+0020, U+007F to U+0084, U+0086 to
    /// U+009F) makes the whole document XML 1.1. U+0085 alone does not, on purpose.
    bool Text(std::u16string_view text);

    /// Appends a CDATA section, for encoded blocks and embedded metadata; several, with references
    /// between them, where one cannot hold the text.
    bool Characters(std::u16string_view text);

    /// Makes the parent of the current element the current one. False, with nothing changed, at the
    /// document element, which is inside no element.
    bool EndElement();

    /// Serialises the document in memory and then replaces the file by it. False if the document
    /// cannot be serialised (the file is not touched) or the file not be written (it stays as it
    /// was; when only its folder cannot be put on the disk, the new one stands already). A
    /// serialiser that claims success and gives no bytes leaves an empty file, and false.
    bool Save();

private:
    class State;

    bool Step();
    bool Refuse(std::string_view reason);
    bool TakesAttributes(const AttributeMap& attributes);

    std::unique_ptr<State> state_;
    boost::recursive_mutex lock_;
};

}  // namespace tses
