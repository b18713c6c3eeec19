#pragma once

#include <span>
#include <string_view>

#include "format/Attribute.h"
#include "toolkit/Conversion.h"

namespace toolkit {

/// Whether the text is a value of that kind as a writer makes it, and stays the same in the target.
/// A reader takes any other text for absent or for something else. `words` are those of a kind that
/// has some.
bool IsValue(tses::ValueKind kind, std::span<const std::u16string_view> words,
             std::u16string_view text, Target target = Target::SessionFile);

}  // namespace toolkit
