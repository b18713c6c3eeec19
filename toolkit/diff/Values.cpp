#include "toolkit/diff/Values.h"

namespace orvo::diff {
namespace {

bool IsCapital(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

}  // namespace

std::string InWords(std::string_view key) {
    std::string words;
    for (std::size_t i = 0; i < key.size(); ++i) {
        const bool isCapital = IsCapital(key[i]);
        const bool standsAlone = i > 0 && IsCapital(key[i - 1]);
        const bool beginsWord = isCapital && i > 0 && !standsAlone;
        const bool isAbbreviation =
            isCapital && (standsAlone || (i + 1 < key.size() && IsCapital(key[i + 1])));
        words += beginsWord ? " " : "";
        words += isCapital && !isAbbreviation ? static_cast<char>(key[i] - 'A' + 'a') : key[i];
    }
    return words;
}

std::string Quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

}  // namespace orvo::diff
