#include "toolkit/media/Manifest.h"

#include <algorithm>
#include <filesystem>

namespace toolkit {
namespace {

constexpr std::size_t kDigits = 64;
constexpr std::string_view kGap = "  ";

bool IsInside(std::string_view name) {
    const std::filesystem::path path(name);
    return !name.empty() && path.is_relative() &&
           std::find(path.begin(), path.end(), "..") == path.end();
}

bool IsDigest(std::string_view text) {
    return text.size() == kDigits && text.find_first_not_of("0123456789abcdef") == text.npos;
}

}  // namespace

std::string ManifestLine(const std::string& name, const std::string& digest) {
    return digest + std::string(kGap) + name + "\n";
}

std::optional<Manifest> ParseManifest(std::string_view text) {
    Manifest manifest;
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        const std::string_view digest = line.substr(0, kDigits);
        const std::string_view rest = line.substr(digest.size());
        const std::string_view name = rest.substr(std::min(kGap.size(), rest.size()));
        if (!IsDigest(digest) || !rest.starts_with(kGap) || !IsInside(name)) {
            return std::nullopt;
        }
        manifest.emplace_back(name, digest);
    }
    return manifest;
}

}  // namespace toolkit
