#pragma once

#include <string>
#include <string_view>

/// The modules that import media: each has an identifier that never changes and a name that people
/// read.
namespace tbcore {

/// The readable name of a handler's identifier. False, and `name` untouched, when it is not known.
bool TranslateToHumanReadableMediaHandler(std::u16string_view identifier, std::u16string& name);

/// The identifier behind a readable name, compared exactly. False, and `identifier` untouched, when
/// it is not known.
bool TranslateFromHumanReadableMediaHandler(std::u16string_view name, std::u16string& identifier);

}  // namespace tbcore
