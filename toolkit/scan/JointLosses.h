#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Types.h"
#include "toolkit/Conversion.h"
#include "toolkit/scan/LossWords.h"
#include "toolkit/scan/ScannedAttributes.h"

namespace toolkit {

/// Finds losses that no single attribute shows: those that follow from several attributes, from the
/// kind of conversion, or from values that a reader replaces. Call it for each element in document
/// order.
class JointLosses {
public:
    explicit JointLosses(const Conversion& conversion, Length length = Length::Short)
        : conversion_(conversion), length_(length) {}

    /// What the element loses, in words.
    std::vector<std::string> AtStart(std::u16string_view name, const ScannedAttributes& attributes);
    std::vector<std::string> AtEnd(std::u16string_view name) const;

private:
    std::vector<std::string> OfFile(const ScannedAttributes& attributes) const;

    const Conversion& conversion_;
    Length length_;

    /// They decide the position that reading a session ends with.
    std::u16string version_;
    kelcore::int64 ctiPosition_ = 0;
    kelcore::int64 selectionStart_ = 0;
};

}  // namespace toolkit
