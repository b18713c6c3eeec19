#include "toolkit/check/DocumentPlaces.h"

#include <algorithm>
#include <optional>

#include "platform/kelcore/Unicode.h"
#include "toolkit/TextPlaces.h"

namespace toolkit {

Place DocumentPlaces::OfElement(std::size_t element) {
    return At(document_.Elements()[element].startTag.begin);
}

Place DocumentPlaces::OfAttribute(std::size_t element, std::u16string_view name) {
    const ElementExtent& extent = document_.Elements()[element];
    std::optional<Extent> found;
    for (const AttributeExtent& attribute : document_.Index().AttributesOf(extent)) {
        const std::u16string spelled = document_.TextOf(attribute.name);
        if (spelled == name) {
            return At(attribute.name.begin);
        }
        if (spelled.substr(spelled.find(u':') + 1) == name) {
            found = attribute.name;
        }
    }
    return found ? At(found->begin) : OfElement(element);
}

Place DocumentPlaces::At(std::size_t unit) {
    if (unit < unit_) {
        unit_ = 0;
        place_ = {1, 1};
    }
    const std::string_view between = document_.Index().Text({unit_, unit});
    if (const kelcore::uint64 lines = CountLineEnds(between); lines != 0) {
        place_ = {place_.line + lines, 1};
        unit_ += between.find_last_of("\r\n") + 1;
    }
    const std::u16string line = document_.TextOf({unit_, unit});
    const auto halves = std::ranges::count_if(line, kelcore::unicode::IsLowSurrogate);
    place_.column += line.size() - static_cast<std::size_t>(halves);
    unit_ = unit;
    return place_;
}

}  // namespace toolkit
