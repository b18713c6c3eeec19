#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/edit/EditedDocument.h"

namespace toolkit {

/// Finds the elements of a session's document from which the parts of the session were read.
class ModelPlaces {
public:
    /// An attribute of an element, or the element itself.
    struct Spot {
        std::size_t element = 0;        ///< its number in the document's order
        std::u16string attribute = {};  ///< without a prefix; empty: the element
    };

    /// @param document  must outlive this object
    explicit ModelPlaces(const EditedDocument& document);

    /// What a path in the session's JSON speaks of. If it has no element of its own, the nearest
    /// one around it.
    Spot Find(std::string_view path) const;

private:
    /// An object or list of the JSON.
    struct Object {
        std::vector<std::size_t> elements;  // from which it was read; the first one made it
        std::map<std::string, std::size_t, std::less<>> members;  // numbers of objects
        std::size_t count = 0;                                    // of the items of a list
    };

    std::size_t ObjectOf(std::size_t element);
    std::size_t InList(std::size_t parent, std::size_t element, std::string_view list);
    std::size_t Member(std::size_t parent, const std::string& name);
    std::optional<std::string> KeyIn(std::size_t element) const;
    Spot InObject(const Object& object, std::string_view member) const;

    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    const EditedDocument& document_;
    std::vector<Object> objects_{1};
    std::vector<std::size_t> objectOf_;  // of each element; `kNowhere` if a read drops it
    std::map<std::pair<std::size_t, std::string>, std::size_t> byKey_;  // items of lists
};

}  // namespace toolkit
