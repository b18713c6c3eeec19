#pragma once

#include <optional>
#include <string_view>

#include "platform/kelcore/TextUnits.h"
#include "platform/kelcore/Types.h"

namespace tses {

/// A place in a document. Both count from 1, columns in UTF-16 units as the parser does.
struct DocumentPlace {
    kelcore::uint64 line = 1;
    kelcore::uint64 column = 1;
};

/// Tells what stands at a place in a file. It reads the file itself, each byte once and only as far
/// as it is asked, so a document without long parts costs next to nothing.
///
/// It assumes a well-formed document: the parser stops at the first place where it is not.
class MarkupTracker {
public:
    enum class Kind {
        Text,          ///< between tags, or outside the root
        Section,       ///< a CDATA section or a comment
        Tag,           ///< a tag or a processing instruction
        DocumentType,  ///< from its declaration on; what follows is not looked at
    };

    /// @param descriptor  of the file, which must stay open as long as the tracker is asked
    MarkupTracker(int descriptor, kelcore::TextUnits units)
        : descriptor_(descriptor), units_(units), position_(units.markSize) {}

    /// Looks for a document type declaration before the root, in the bytes before `offset`. Call it
    /// before anything else, with growing offsets until the root is found.
    std::optional<DocumentPlace> FindDocumentType(kelcore::uint64 offset);
    bool FoundRoot() const noexcept { return kind_ == Kind::Tag && end_.empty(); }

    /// What the byte at `offset` belongs to. Offsets must not decrease from call to call.
    Kind KindAt(kelcore::uint64 offset);

    /// The offset in the file at which that began.
    kelcore::uint64 Begin() const noexcept { return begin_; }

    /// How many values of attributes have begun in a tag so far.
    std::size_t ValuesInTag() const noexcept { return values_; }

private:
    template <class Visit>
    void AdvanceTo(kelcore::uint64 offset, Visit visit);
    std::size_t Advance(std::string_view markup);
    std::size_t AdvanceInText(std::string_view markup);
    std::size_t AdvanceBehind(std::string_view markup, Kind next);
    std::size_t AdvanceInTag(std::string_view markup);

    int descriptor_;
    kelcore::TextUnits units_;
    kelcore::uint64 position_;  // up to where the file is understood
    DocumentPlace place_;       // of position_, until the root is found
    kelcore::uint64 begin_ = 0;
    std::size_t values_ = 0;
    Kind kind_ = Kind::Text;
    std::string_view end_;  // what ends the section or value; empty elsewhere in a tag
};

}  // namespace tses
