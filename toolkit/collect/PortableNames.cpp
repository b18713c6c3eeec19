#include "toolkit/collect/PortableNames.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "toolkit/FileNames.h"
#include "toolkit/media/FoldedName.h"

namespace toolkit {
namespace {

/// In bytes, so that a number still fits into the 255 of most file systems.
constexpr std::size_t kLongest = 240;

constexpr std::string_view kRefused = "<>:\"/\\|?*";

/// What Windows takes for a device, with any extension.
bool IsDevice(std::string_view name) {
    const std::string stem = ToLower(name.substr(0, name.find('.')));
    constexpr std::array<std::string_view, 4> kDevices = {"con", "prn", "aux", "nul"};
    const bool hasNumber = stem.size() == 4 && stem[3] >= '1' && stem[3] <= '9';
    return std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end() ||
           (hasNumber && (stem.starts_with("com") || stem.starts_with("lpt")));
}

bool IsAccepted(utf8proc_int32_t codepoint) {
    const bool isControl = codepoint < 0x20 || (codepoint >= 0x7F && codepoint < 0xA0);
    return !isControl &&
           (codepoint >= 0x80 || kRefused.find(static_cast<char>(codepoint)) == kRefused.npos);
}

/// The longest beginning of whole characters with at most that many bytes.
std::string_view Beginning(std::string_view text, std::size_t bytes) {
    std::size_t size = std::min(bytes, text.size());
    while (size != 0 && size != text.size() &&
           (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) {
        --size;
    }
    return text.substr(0, size);
}

}  // namespace

std::string PortableName(std::string_view name) {
    std::string portable;
    for (std::size_t at = 0; at < name.size();) {
        utf8proc_int32_t codepoint = -1;
        const auto size =
            utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(name.data()) + at,
                             static_cast<utf8proc_ssize_t>(name.size() - at), &codepoint);
        const std::size_t taken = size > 0 ? static_cast<std::size_t>(size) : 1;
        portable += size > 0 && IsAccepted(codepoint) ? name.substr(at, taken) : "_";
        at += taken;
    }
    if (portable.empty() || portable.ends_with('.') || portable.ends_with(' ')) {
        portable += '_';
    }
    return IsDevice(portable) || portable.starts_with('.') ? "_" + portable : portable;
}

std::string UniqueNames::Take(const std::string& name) {
    const std::filesystem::path path(name);
    const std::string extension(Beginning(path.extension().string(), kLongest / 2));
    const std::string stem(Beginning(path.stem().string(), kLongest - extension.size()));
    std::string unique = stem + extension;
    for (int number = 2; !folded_.insert(FoldedName(unique)).second; ++number) {
        unique = fmt::format("{}-{}{}", stem, number, extension);
    }
    return unique;
}

}  // namespace toolkit
