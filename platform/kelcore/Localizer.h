#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

/// User-visible texts by key. A key contains its default: "$$$/Group/Name=The default text".
namespace kelcore {

class Localizer {
public:
    /// Returns the translation of the part before the first "=" if one is installed, otherwise the
    /// text after it. A key without "=" and without a translation returns itself. Keys are UTF-8.
    static std::u16string Lookup(std::string_view key);

    /// Also replaces "@0" to "@9" with the arguments. A placeholder without an argument stays as it
    /// is; placeholders inside an argument are not replaced.
    static std::u16string Lookup(std::string_view key,
                                 std::initializer_list<std::u16string_view> arguments);

    /// Installs the translation of a name ("$$$/Group/Name", without "=" and default), replacing
    /// any earlier one. The whole process shares it.
    static void SetTranslation(std::string_view name, std::u16string text);

    /// Removes all translations.
    static void Clear();
};

}  // namespace kelcore
