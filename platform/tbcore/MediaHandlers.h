#pragma once

#include <string_view>

/// The modules that import media. Each has a permanent identifier and a readable name, which are
/// constants.
namespace tbcore {

/// Looks up the readable name of an identifier. If unknown, returns false and leaves `name`
/// unchanged.
bool TranslateToHumanReadableMediaHandler(std::u16string_view identifier,
                                          std::u16string_view& name);

/// Looks up the identifier of a readable name (exact match). If unknown, returns false and leaves
/// `identifier` unchanged.
bool TranslateFromHumanReadableMediaHandler(std::u16string_view name,
                                            std::u16string_view& identifier);

}  // namespace tbcore
