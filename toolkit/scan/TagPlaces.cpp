#include "toolkit/scan/TagPlaces.h"

#include <algorithm>
#include <numeric>

#include "toolkit/CharacterPlaces.h"
#include "toolkit/TextPlaces.h"

namespace toolkit {
namespace {

bool IsBefore(const TagEnd& one, const TagEnd& other) {
    return one.place.line != other.place.line ? one.place.line < other.place.line
                                              : one.place.column < other.place.column;
}

/// The columns of offsets in the document's order. Each call counts on from the one before.
class Columns {
public:
    explicit Columns(std::string_view document) : document_(document) {}

    kelcore::uint64 At(std::size_t offset) {
        const std::string_view between = document_.substr(offset_, offset - offset_);
        const bool isSameLine = offset_ != 0 && between.find_first_of("\r\n") == between.npos;
        column_ = isSameLine ? column_ + CountCharacters(between) : ColumnOf(document_, offset);
        offset_ = offset;
        return column_;
    }

private:
    std::string_view document_;
    std::size_t offset_ = 0;
    kelcore::uint64 column_ = 1;
};

/// For a document where "<" is a byte.
std::vector<Place> BeginsByBytes(const std::vector<TagEnd>& ends, std::string_view document) {
    std::vector<Place> places;
    Columns columns(document);
    for (const TagEnd& end : ends) {
        const std::string_view front = document.substr(0, end.offset);
        const std::size_t begin = std::min(front.rfind('<'), front.size());
        places.push_back({end.place.line - CountLineEnds(front.substr(begin)), columns.At(begin)});
    }
    return places;
}

/// Where "<" has several bytes, the place of a tag is its end.
std::vector<Place> EndsInCharacters(const std::vector<TagEnd>& ends, std::string_view document) {
    std::vector<Place> places;
    for (const TagEnd& end : ends) {
        places.push_back(end.place);
    }
    InCharacters(document, places);
    return places;
}

}  // namespace

std::vector<Place> BeginsOf(const std::vector<TagEnd>& ends, std::string_view document) {
    std::vector<std::size_t> order(ends.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, [&](std::size_t one, std::size_t other) {
        return IsBefore(ends[one], ends[other]);
    });
    std::vector<TagEnd> sorted;
    for (const std::size_t index : order) {
        sorted.push_back(ends[index]);
    }
    const std::vector<Place> found = HasByteSizedMarkup(document)
                                         ? BeginsByBytes(sorted, document)
                                         : EndsInCharacters(sorted, document);
    std::vector<Place> places(ends.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        places[order[i]] = found[i];
    }
    return places;
}

}  // namespace toolkit
