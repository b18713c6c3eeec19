#include "toolkit/media/FoldedName.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "toolkit/FileNames.h"

namespace toolkit {
namespace {

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

}  // namespace

std::string FoldedName(std::string_view name) {
    if (IsAscii(name)) {
        return ToLower(name);
    }
    utf8proc_uint8_t* mapped = nullptr;
    const auto size = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t*>(name.data()),
        static_cast<utf8proc_ssize_t>(name.size()), &mapped,
        static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(mapped, &std::free);
    return size < 0
               ? ToLower(name)
               : std::string(reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(size));
}

}  // namespace toolkit
