#include "toolkit/MediaPaths.h"

#include <string>
#include <utility>
#include <variant>

#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/FileNames.h"

namespace toolkit {
namespace {

constexpr std::string_view kFileScheme = "file";
constexpr std::string_view kThisHost = "localhost";

/// What is wrong with a path, and what to do about it.
struct Refusal {
    std::string what;
    std::string advice;
};

using Resolved = std::variant<std::u16string, Refusal>;

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool IsSlash(char16_t unit) {
    return unit == u'/' || unit == u'\\';
}

/// "D:\Jobs" or "d:/jobs".
bool HasDrive(std::u16string_view path) {
    return path.size() > 2 && IsLetter(path[0]) && path[1] == u':' && IsSlash(path[2]);
}

/// The scheme of a URL, in lower case; empty for a path. A file name may contain a colon.
std::string SchemeOf(std::u16string_view path) {
    std::string scheme;
    for (const char16_t unit : path.substr(0, path.find(u':'))) {
        const bool isInner =
            (unit >= u'0' && unit <= u'9') || unit == u'+' || unit == u'-' || unit == u'.';
        if (!IsLetter(unit) && (scheme.empty() || !isInner)) {
            return {};
        }
        scheme += ToLower(static_cast<char>(unit));
    }
    const std::u16string_view rest = path.substr(scheme.size());
    const bool isUrl = rest.starts_with(scheme == kFileScheme ? u":" : u"://");
    return isUrl ? scheme : std::string();
}

/// The byte for the two hexadecimal digits at the beginning of a text; 0 if there are none.
unsigned ByteOf(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const std::size_t high = text.size() < 2 ? kDigits.npos : kDigits.find(ToLower(text[0]));
    const std::size_t low = text.size() < 2 ? kDigits.npos : kDigits.find(ToLower(text[1]));
    return high == kDigits.npos || low == kDigits.npos ? 0 : static_cast<unsigned>(high * 16 + low);
}

/// Decodes a part of a URL without %00; no value if it is malformed.
std::optional<std::string> DecodePercents(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        const unsigned byte = ByteOf(text.substr(i + 1));
        if (byte == 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(byte);
        i += 2;
    }
    return bytes;
}

/// @param rest  of the URL, after its scheme and the colon
Resolved PathOfFileUrl(std::string_view rest) {
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        const std::string_view host = rest.substr(0, rest.find('/'));
        if (!host.empty() && ToLower(host) != kThisHost) {
            return Refusal{"this URL names the host \"" + std::string(host) + "\"",
                           "name a file of this machine"};
        }
        rest.remove_prefix(host.size());
    }
    if (!rest.starts_with('/') || rest.ends_with('/')) {
        return Refusal{"this URL names no file", "give it a full path, as in file:///media/a.wav"};
    }
    if (rest.find_first_of("?#") != std::string_view::npos) {
        return Refusal{"this URL of a file has a query or a fragment",
                       "write ? as %3F and # as %23 in a name"};
    }
    if (rest.find("%00") != std::string_view::npos) {
        return Refusal{"%00 in this URL stands for a zero, which no path has", "leave it out"};
    }
    const auto bytes = DecodePercents(rest);
    if (!bytes) {
        return Refusal{"a % in this URL is not followed by the number of a byte",
                       "write % as %25 in a name"};
    }
    // In a URL, a path with a drive has a slash before it.
    std::u16string path = kelcore::PathFromBytes(*bytes);
    return HasDrive(std::u16string_view(path).substr(1)) ? path.substr(1) : path;
}

Resolved Resolve(std::u16string_view path, std::u16string_view location) {
    const std::string scheme = SchemeOf(path);
    if (scheme == kFileScheme) {
        return PathOfFileUrl(kelcore::PathToBytes(path.substr(scheme.size() + 1)));
    }
    if (!scheme.empty()) {
        return Refusal{"this is a URL with the scheme \"" + scheme + "\"",
                       "name a file by its path, or by a URL that begins with file://"};
    }
    return kelcore::MakeFileFromPath(path, location);
}

}  // namespace

bool IsFullMediaPath(std::u16string_view path) {
    return path.empty() || IsSlash(path.front()) || HasDrive(path);
}

std::optional<Problem> ResolveMediaPaths(orvo::Session& session, std::u16string_view location) {
    for (std::size_t i = 0; i < session.files.size(); ++i) {
        const std::u16string path = kelcore::UTF8to16(session.files[i].path);
        if (IsFullMediaPath(path)) {
            continue;
        }
        Resolved resolved = Resolve(path, location);
        if (auto* const refusal = std::get_if<Refusal>(&resolved)) {
            return Problem{{},
                           "/files/" + std::to_string(i) + "/path: " + std::move(refusal->what),
                           std::move(refusal->advice)};
        }
        session.files[i].path = kelcore::UTF16to8(std::get<std::u16string>(resolved));
    }
    return std::nullopt;
}

}  // namespace toolkit
