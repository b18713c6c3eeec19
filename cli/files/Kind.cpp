#include "cli/files/Kind.h"

#include <map>

#include "toolkit/FileNames.h"

namespace cli {
namespace {

const std::map<std::string, Kind> kKinds = {{"orvo", Kind::Orvo}, {"json", Kind::Json}};

std::optional<Kind> KindNamed(const std::string& text) {
    const auto kind = kKinds.find(text);
    return kind != kKinds.end() ? std::optional(kind->second) : std::nullopt;
}

/// A CLI11 check: empty if the text names a kind, otherwise an error message.
std::string CheckKind(const std::string& text) {
    return KindNamed(text) ? "" : "\"" + text + "\" is not a kind; use orvo or json";
}

}  // namespace

void AddKindOption(CLI::App& verb, const std::string& option, std::string& stated,
                   const std::string& description) {
    verb.add_option(option, stated, description)->type_name("KIND")->check(CheckKind, "");
}

std::optional<Kind> FindKind(const std::string& stated, const std::string& name) {
    return stated.empty() ? KindNamed(toolkit::ExtensionOf(name)) : KindNamed(stated);
}

}  // namespace cli
