#include "toolkit/FileNames.h"

#include <algorithm>
#include <filesystem>

namespace toolkit {

bool IsNamedAsFolder(std::string_view name) {
    return name.ends_with('/') || name.ends_with("/.");
}

char ToLower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string ToLower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char letter) { return ToLower(letter); });
    return lower;
}

std::string ExtensionOf(std::string_view name) {
    const std::string extension = std::filesystem::path(name).extension().string();
    return extension.empty() ? "" : ToLower(extension.substr(1));
}

}  // namespace toolkit
