#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "format/Element.h"

namespace toolkit {

/// A part of a document. Counts units: bytes, or the wider units of UTF-16 and UCS-4.
struct Extent {
    std::size_t begin = 0;
    std::size_t end = 0;

    std::size_t Size() const { return end - begin; }
};

struct AttributeExtent {
    Extent name;
    Extent value;  ///< between the quotes
    char quote;
};

/// A part of an element's character data: a CDATA section with its marks, or what stands between
/// two pieces of markup.
struct TextExtent {
    Extent extent;
    bool isSection = false;
};

struct ElementExtent {
    const tses::Element* kind;  ///< null if the format does not know the element where it stands
    std::size_t parent;         ///< the root's own number for the root
    Extent name;                ///< with its prefix
    Extent startTag;            ///< with its angle brackets
    std::size_t endTag;         ///< where the end tag begins
    bool isEmptyTag;            ///< "<take/>", which has no end tag
};

enum class PieceKind { Text, Section, Comment, Instruction };

/// What stands in an element between tags.
struct Piece {
    PieceKind kind;
    Extent content;       ///< without the marks of a section or comment, or an instruction's target
    std::size_t element;  ///< the innermost around it; the root's number also outside of the root
};

/// Where the elements of a document stand. The document must be well-formed and without a document
/// type declaration.
class DocumentIndex {
public:
    /// @param markup  the document's (see `kelcore::MarkupOf`); must outlive the index
    explicit DocumentIndex(std::string_view markup);

    /// In the document's order, the root first.
    const std::vector<ElementExtent>& Elements() const { return elements_; }

    /// In the order of the tag.
    std::vector<AttributeExtent> AttributesOf(const ElementExtent& element) const;

    /// The character data directly in an element that contains no others. At least one part, which
    /// may be empty, unless the element is an empty tag.
    std::vector<TextExtent> TextsOf(const ElementExtent& element) const;

    /// Everything that is no tag, in the document's order, but the XML declaration.
    std::vector<Piece> Pieces() const;

    std::string_view Markup() const { return markup_; }
    std::string_view Text(Extent extent) const {
        return markup_.substr(extent.begin, extent.Size());
    }

private:
    class Builder;

    std::string_view markup_;
    std::vector<ElementExtent> elements_;
};

}  // namespace toolkit
