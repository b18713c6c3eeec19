#include "format/ValueText.h"

namespace tses {

std::u16string ValueText::ToString() const {
    return {units_.begin(), units_.end()};
}

}  // namespace tses
