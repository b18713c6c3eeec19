#include "toolkit/redact/Pseudonyms.h"

#include <algorithm>

#include "platform/kelcore/Strings.h"

namespace toolkit {
namespace {

constexpr std::u16string_view kSpace = u" \t\r\n";
constexpr std::u16string_view kSlashes = u"/\\";
constexpr std::string_view kPartOfPath = "name";
constexpr std::string_view kNamespace = "urn:namespace";

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool IsLetterOrDigit(char16_t unit) {
    return IsLetter(unit) || IsDigit(unit) || unit >= 0x80;
}

bool IsDrive(std::u16string_view part) {
    return part.size() == 2 && IsLetter(part[0]) && part[1] == u':';
}

/// Where the extension of a file's name begins, with its point; the name's end if it has none that
/// says no more than the kind of the file.
std::size_t BeginOfExtension(std::u16string_view name) {
    constexpr std::size_t kLongest = 5;
    const std::size_t point = name.rfind(u'.');
    if (point == name.npos || point == 0 || name.size() - point > kLongest + 1) {
        return name.size();
    }
    const std::u16string_view extension = name.substr(point + 1);
    const bool isPlain = std::ranges::all_of(
        extension, [](char16_t unit) { return IsLetter(unit) || IsDigit(unit); });
    return isPlain && !extension.empty() ? point : name.size();
}

std::u16string Numbered(std::string_view thing, std::size_t number, std::string_view between) {
    return kelcore::UTF8to16(std::string(thing) + std::string(between) + std::to_string(number));
}

}  // namespace

std::u16string Pseudonyms::OfName(std::string_view thing, std::u16string_view name) {
    const std::size_t begin = name.find_first_not_of(kSpace);
    if (begin == name.npos) {
        return std::u16string(name);
    }
    const std::size_t end = name.find_last_not_of(kSpace) + 1;
    const std::size_t number = NumberOf(thing, name.substr(begin, end - begin));
    return std::u16string(name.substr(0, begin)) + Numbered(thing, number, " ") +
           std::u16string(name.substr(end));
}

std::u16string Pseudonyms::OfPath(std::u16string_view path) {
    std::u16string made;
    while (!path.empty()) {
        const std::size_t size = std::min(path.find_first_of(kSlashes), path.size());
        const bool isLast = size == path.size();
        made += OfPart(path.substr(0, size), isLast);
        if (!isLast) {
            made += path[size];
        }
        path.remove_prefix(std::min(size + 1, path.size()));
    }
    return made;
}

std::u16string Pseudonyms::OfPart(std::u16string_view part, bool isLast) {
    if (part.empty() || part == u"." || part == u".." || IsDrive(part)) {
        return std::u16string(part);
    }
    const std::size_t end = isLast ? BeginOfExtension(part) : part.size();
    return Numbered(kPartOfPath, NumberOf(kPartOfPath, part.substr(0, end)), "") +
           std::u16string(part.substr(end));
}

std::u16string Pseudonyms::OfNamespace(std::u16string_view uri) {
    return Numbered(kNamespace, NumberOf(kNamespace, uri), "");
}

std::size_t Pseudonyms::NumberOf(std::string_view thing, std::u16string_view text) {
    const auto [known, isNew] = numbers_.try_emplace({std::string(thing), std::u16string(text)}, 0);
    if (isNew) {
        known->second = ++counts_[std::string(thing)];
    }
    return known->second;
}

std::map<std::string, std::string> Pseudonyms::Key() const {
    std::map<std::string, std::string> key;
    for (const auto& [text, number] : numbers_) {
        const bool isWord = text.first == kPartOfPath || text.first == kNamespace;
        const std::string_view between = isWord ? "" : " ";
        key.emplace(kelcore::UTF16to8(Numbered(text.first, number, between)),
                    kelcore::UTF16to8(text.second));
    }
    return key;
}

std::u16string Masked(std::u16string_view text) {
    std::u16string masked(text);
    std::ranges::replace_if(masked, IsLetterOrDigit, u'x');
    return masked;
}

std::u16string Zeroed(std::u16string_view base64) {
    std::u16string zeroed(base64);
    std::ranges::replace_if(
        zeroed, [](char16_t unit) { return IsLetterOrDigit(unit) || unit == u'+' || unit == u'/'; },
        u'A');
    return zeroed;
}

}  // namespace toolkit
