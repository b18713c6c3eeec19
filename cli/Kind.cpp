#include "cli/Kind.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace cli {
namespace {

const std::map<std::string, Kind> kKinds = {{"orvo", Kind::Orvo}, {"json", Kind::Json}};

std::optional<Kind> KindNamed(const std::string& text) {
    const auto kind = kKinds.find(text);
    return kind != kKinds.end() ? std::optional(kind->second) : std::nullopt;
}

/// As CLI11 wants a check: empty if the text is a kind, else what is wrong with it.
std::string CheckKind(const std::string& text) {
    return KindNamed(text) ? "" : "\"" + text + "\" is no kind; say orvo or json";
}

char ToLower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::optional<Kind> KindByExtension(const std::string& name) {
    std::string extension = std::filesystem::path(name).extension().string();
    std::ranges::transform(extension, extension.begin(), ToLower);
    return extension.empty() ? std::nullopt : KindNamed(extension.substr(1));
}

}  // namespace

void AddKindOption(CLI::App& verb, const std::string& option, std::string& stated,
                   const std::string& description) {
    verb.add_option(option, stated, description)->type_name("KIND")->check(CheckKind, "");
}

std::optional<Kind> FindKind(const std::string& stated, const std::string& name) {
    return stated.empty() ? KindByExtension(name) : KindNamed(stated);
}

}  // namespace cli
