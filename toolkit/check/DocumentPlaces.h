#pragma once

#include <cstddef>
#include <string_view>

#include "toolkit/DocumentScan.h"
#include "toolkit/edit/EditedDocument.h"

namespace toolkit {

/// Finds lines and columns in a session's document. Takes time in proportion to the distance from
/// the place before, so ask in the document's order.
class DocumentPlaces {
public:
    /// @param document  must outlive this object
    explicit DocumentPlaces(const EditedDocument& document) : document_(document) {}

    /// Where the tag of an element begins.
    Place OfElement(std::size_t element);

    /// Where an attribute begins; the tag if it has no such attribute.
    /// @param name  with its prefix, or without one
    Place OfAttribute(std::size_t element, std::u16string_view name);

private:
    Place At(std::size_t unit);

    const EditedDocument& document_;
    std::size_t unit_ = 0;
    Place place_{1, 1};
};

}  // namespace toolkit
