#include "toolkit/FileKind.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "platform/kelcore/TextUnits.h"
#include "toolkit/TextPlaces.h"

namespace toolkit {
namespace {

using namespace std::string_view_literals;

struct Kind {
    std::string_view begin;
    std::string_view form;  ///< eight bytes into the file; empty: any
    const char* what;
    const char* advice;
};

constexpr const char* kIsSound = "name the session that uses it";

constexpr Kind kKinds[] = {
    {"\x1F\x8B"sv, "", "this is a gzip file", "unpack it first (gunzip)"},
    {"BZh", "", "this is a bzip2 file", "unpack it first (bunzip2)"},
    {"\xFD"
     "7zXZ"sv,
     "", "this is an xz file", "unpack it first (unxz)"},
    {"\x28\xB5\x2F\xFD"sv, "", "this is a zstd file", "unpack it first (unzstd)"},
    {"PK\x03\x04"sv, "", "this is a zip file", "unpack it first (unzip)"},
    {"RIFF", "WAVE", "this is a WAV file", kIsSound},
    {"RF64", "WAVE", "this is a WAV file", kIsSound},
    {"FORM", "AIF", "this is an AIFF file", kIsSound},
    {"fLaC", "", "this is a FLAC file", kIsSound},
};

constexpr std::size_t kFormOffset = 8;

bool Fits(const Kind& kind, std::string_view content) {
    return content.starts_with(kind.begin) &&
           (kind.form.empty() ||
            (content.size() > kFormOffset && content.substr(kFormOffset).starts_with(kind.form)));
}

/// The first character of a UTF-8 text that is not a blank; 0 if there is none.
char FirstOf(std::string_view content) {
    content.remove_prefix(content.starts_with(kelcore::kUtf8Mark) ? kelcore::kUtf8Mark.size() : 0);
    const std::size_t first = content.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos ? content[first] : '\0';
}

/// A session in JSON is an object; the output of info is a list.
bool IsJson(std::string_view content) {
    return FirstOf(content) == '{' || FirstOf(content) == '[';
}

/// Without a byte order mark, a zero reveals it: JSON and XML begin with an ASCII character.
bool IsUtf16(std::string_view content) {
    return !HasByteSizedMarkup(content.substr(0, 2));
}

std::optional<Problem> RecogniseKind(std::string_view content) {
    for (const Kind& kind : kKinds) {
        if (Fits(kind, content)) {
            return Problem{{}, kind.what, kind.advice};
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<Problem> RecogniseOtherKind(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return std::nullopt;
    }
    std::array<char, 4096> begin{};
    std::ifstream file(path, std::ios::binary);
    file.read(begin.data(), begin.size());
    const std::string_view content(begin.data(), static_cast<std::size_t>(file.gcount()));
    if (auto kind = RecogniseKind(content)) {
        return kind;
    }
    if (IsJson(content)) {
        return Problem{{}, "this is JSON", "make a session of it first (orvo convert --from json)"};
    }
    return std::nullopt;
}

std::optional<Problem> RecogniseOtherKindThanJson(std::string_view begin) {
    if (auto kind = RecogniseKind(begin)) {
        return kind;
    }
    if (IsUtf16(begin)) {
        return Problem{{}, "this is a text in UTF-16", "save it as UTF-8"};
    }
    if (FirstOf(begin) == '<') {
        return Problem{{}, "this is XML, perhaps a session", "say --from orvo"};
    }
    return std::nullopt;
}

}  // namespace toolkit
