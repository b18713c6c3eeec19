#include "toolkit/interchange/otio/MediaUrl.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace toolkit::interchange::otio {
namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool HasDrive(std::string_view path) {
    return path.size() >= 2 && IsLetter(path[0]) && path[1] == ':' &&
           (path.size() == 2 || path[2] == '/' || path[2] == '\\');
}

std::string Encoded(std::string_view path) {
    constexpr std::string_view kPlain = "-._~/";
    std::string url;
    for (const char c : path) {
        if (IsLetter(c) || IsDigit(c) || kPlain.find(c) != kPlain.npos) {
            url += c;
        } else {
            url += fmt::format("%{:02X}", static_cast<unsigned char>(c));
        }
    }
    return url;
}

/// No value if the text is no URL: it has characters that a URL cannot have.
std::optional<std::string> Decoded(std::string_view url) {
    std::string path;
    while (!url.empty()) {
        if (url[0] != '%') {
            const auto byte = static_cast<unsigned char>(url[0]);
            if (byte <= ' ' || byte >= 0x7F || url[0] == '\\') {
                return std::nullopt;
            }
            path += url[0];
            url.remove_prefix(1);
            continue;
        }
        unsigned byte = 0;
        if (url.size() < 3) {
            return std::nullopt;
        }
        const auto [end, error] = std::from_chars(url.data() + 1, url.data() + 3, byte, 16);
        if (error != std::errc() || end != url.data() + 3) {
            return std::nullopt;
        }
        path += static_cast<char>(byte);
        url.remove_prefix(3);
    }
    return path;
}

/// Whether the text begins with the scheme of a URL, which is longer than the letter of a drive.
bool HasScheme(std::string_view url) {
    const std::size_t end = url.find("://");
    return end != url.npos && end > 1 && std::ranges::all_of(url.substr(0, end), [](char c) {
               return IsLetter(c) || IsDigit(c) || c == '+' || c == '-' || c == '.';
           });
}

/// What follows the scheme, without the name of this computer.
std::string_view WithoutHost(std::string_view url) {
    constexpr std::string_view kThis = "localhost/";
    if (url.starts_with(kThis)) {
        url.remove_prefix(kThis.size() - 1);
    }
    return url;
}

}  // namespace

std::string UrlOf(std::string_view path) {
    if (HasDrive(path)) {
        std::string slashes(path);
        std::ranges::replace(slashes, '\\', '/');
        return "file:///" + slashes.substr(0, 2) + Encoded(std::string_view(slashes).substr(2));
    }
    if (HasScheme(path)) {
        return std::string(path);
    }
    return (path.starts_with('/') ? "file://" : "") + Encoded(path);
}

std::optional<std::string> PathOf(std::string_view url, const std::filesystem::path& folder) {
    constexpr std::string_view kFile = "file://";
    const bool isFile = url.size() >= kFile.size() &&
                        std::ranges::equal(url.substr(0, kFile.size()), kFile, [](char a, char b) {
                            return (IsLetter(a) ? static_cast<char>(a | 0x20) : a) == b;
                        });
    if (!isFile && HasScheme(url)) {
        return std::string(url);
    }
    const std::string_view rest = isFile ? WithoutHost(url.substr(kFile.size())) : url;
    std::string path = Decoded(rest).value_or(std::string(rest));
    if (path.starts_with('/') && HasDrive(std::string_view(path).substr(1))) {
        path.erase(0, 1);
    }
    if (path.empty() || path.find('\0') != path.npos) {
        return std::nullopt;
    }
    if (path.starts_with('/') || HasDrive(path)) {
        return path;
    }
    return std::filesystem::absolute(folder / path).lexically_normal().string();
}

}  // namespace toolkit::interchange::otio
