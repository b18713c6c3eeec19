#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Types.h"
#include "toolkit/Conversion.h"
#include "toolkit/scan/ScannedAttributes.h"

namespace toolkit {

/// What is lost of a session though each attribute by itself is carried: by what attributes say
/// together, by what they say in this conversion, or by a value that a reader exchanges. It is
/// shown the elements in the document's order, each in the place where it belongs.
class JointLosses {
public:
    explicit JointLosses(const Conversion& conversion) : conversion_(conversion) {}

    /// What the element loses, in words.
    std::vector<std::string> AtStart(std::u16string_view name, const ScannedAttributes& attributes);
    std::vector<std::string> AtEnd(std::u16string_view name) const;

private:
    std::vector<std::string> OfFile(const ScannedAttributes& attributes) const;

    const Conversion& conversion_;

    /// What the position depends on that reading a session ends with.
    std::u16string version_;
    kelcore::int64 ctiPosition_ = 0;
    kelcore::int64 selectionStart_ = 0;
};

}  // namespace toolkit
