#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

/// Texts for people, by key. A key carries its own default: "$$$/Group/Name=The default text".
namespace kelcore {

class Localizer {
public:
    /// The installed translation of the part before the first "=", or else the text after it. A key
    /// without "=" and without translation gives itself. The key is UTF-8.
    static std::u16string Lookup(std::string_view key);

    /// The same, with "@0" to "@9" replaced by the arguments; a place without an argument stays as
    /// it is, and places inside an argument are not replaced again.
    static std::u16string Lookup(std::string_view key,
                                 std::initializer_list<std::u16string_view> arguments);

    /// Installs the translation of a name ("$$$/Group/Name", without "=" and default), replacing an
    /// earlier one. Shared by the whole process.
    static void SetTranslation(std::string_view name, std::u16string text);

    /// Forgets all translations.
    static void Clear();
};

}  // namespace kelcore
