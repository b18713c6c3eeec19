#include "toolkit/interchange/dawproject/MediaReader.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string_view>

namespace toolkit::interchange::dawproject {

using orvo::Fidelity;

namespace {

/// Replaces "%20" and the like by their bytes.
std::string Decoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        const char* const digits = text.data() + i + 1;
        const bool isEscape = text[i] == '%' && text.size() - i > 2 &&
                              std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        decoded += isEscape ? static_cast<char>(byte) : text[i];
        i += isEscape ? 2 : 0;
    }
    return decoded;
}

/// The path of a URL of a file; any other text as it is.
std::string PathOfUrl(std::string_view text) {
    constexpr std::string_view kScheme = "file://";
    if (!text.starts_with(kScheme)) {
        return std::string(text);
    }
    text.remove_prefix(kScheme.size());
    const std::size_t path = text.find('/');  // behind the host
    return Decoded(path == text.npos ? text : text.substr(path));
}

}  // namespace

std::uint32_t MediaReader::FileIdOf(const pugi::xml_node& media) {
    const pugi::xml_node file = media.child("File");
    const std::string said = file.attribute("path").value();
    if (said.empty()) {
        document_.Report(Fidelity::Lost, media, "the clip plays no file");
        return orvo::kNoId;
    }
    const bool isInside = !IsTrue(file, "external", false) && hasEntry_(said);
    // No path of a file begins with a zero.
    const std::string path = isInside ? std::string(1, '\0') + said : PathOf(file);
    const auto [known, isNew] =
        ids_.try_emplace(path, static_cast<std::uint32_t>(session_.files.size() + 1));
    if (isNew) {
        if (isInside) {
            inside_.push_back({.file = session_.files.size(), .entry = said});
        }
        session_.files.push_back(
            {.id = known->second, .path = isInside ? (AbsoluteFile() / said).string() : path});
    }
    return known->second;
}

bool MediaReader::IsOffline(std::uint32_t fileId) const {
    return document_.Job().options.mediaFolder.empty() &&
           std::ranges::any_of(inside_,
                               [&](const Inside& file) { return file.file + 1 == fileId; });
}

std::string MediaReader::PathOf(const pugi::xml_node& file) const {
    std::string said = PathOfUrl(file.attribute("path").value());
    const bool hasDrive = said.size() > 2 && said[1] == ':';
    if (said.starts_with('/') || hasDrive) {
        return said;
    }
    if (!IsTrue(file, "external", false)) {
        document_.Report(Fidelity::Guessed, file,
                         "the media are not in the file, but perhaps beside it", said);
    }
    return (AbsoluteFile().parent_path() / said).lexically_normal().string();
}

std::filesystem::path MediaReader::AbsoluteFile() const {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::absolute(document_.Job().file, error);
    return error ? document_.Job().file : file;
}

}  // namespace toolkit::interchange::dawproject
