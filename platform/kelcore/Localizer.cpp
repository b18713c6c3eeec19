#include "platform/kelcore/Localizer.h"

#include <functional>
#include <map>
#include <mutex>
#include <shared_mutex>

#include "platform/kelcore/Strings.h"

namespace kelcore {
namespace {

struct Translations {
    std::shared_mutex mutex;
    std::map<std::string, std::u16string, std::less<>> byName;
};

/// Never destroyed: a plug-in may ask during process exit.
Translations& Installed() {
    static Translations& translations = *new Translations;
    return translations;
}

bool IsPlace(std::u16string_view text) {
    return text.size() >= 2 && text[0] == u'@' && text[1] >= u'0' && text[1] <= u'9';
}

}  // namespace

std::u16string Localizer::Lookup(std::string_view key) {
    const std::size_t separator = key.find('=');
    {
        Translations& installed = Installed();
        const std::shared_lock lock(installed.mutex);
        const auto found = installed.byName.find(key.substr(0, separator));
        if (found != installed.byName.end()) {
            return found->second;
        }
    }
    return UTF8to16(separator == std::string_view::npos ? key : key.substr(separator + 1));
}

std::u16string Localizer::Lookup(std::string_view key,
                                 std::initializer_list<std::u16string_view> arguments) {
    const std::u16string text = Lookup(key);
    std::u16string result;
    std::u16string_view rest = text;
    while (!rest.empty()) {
        const std::size_t argument = IsPlace(rest) ? std::size_t{rest[1]} - u'0' : arguments.size();
        if (argument < arguments.size()) {
            result += arguments.begin()[argument];
            rest.remove_prefix(2);
        } else {
            result += rest.front();
            rest.remove_prefix(1);
        }
    }
    return result;
}

void Localizer::SetTranslation(std::string_view name, std::u16string text) {
    Translations& installed = Installed();
    const std::unique_lock lock(installed.mutex);
    installed.byName.insert_or_assign(std::string(name), std::move(text));
}

void Localizer::Clear() {
    Translations& installed = Installed();
    const std::unique_lock lock(installed.mutex);
    installed.byName.clear();
}

}  // namespace kelcore
