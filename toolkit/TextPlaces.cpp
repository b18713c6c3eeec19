#include "toolkit/TextPlaces.h"

#include <algorithm>

#include "platform/kelcore/TextUnits.h"
#include "platform/kelcore/Unicode.h"
#include "toolkit/FileNames.h"

namespace toolkit {
namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

bool HasByteSizedMarkup(std::string_view document) {
    return document.substr(0, 4).find('\0') == std::string_view::npos &&
           !document.starts_with("\xFE\xFF") && !document.starts_with("\xFF\xFE");
}

std::string StatedInDeclaration(std::string_view document, std::string_view name) {
    if (document.starts_with(kelcore::kUtf8Mark)) {
        document.remove_prefix(kelcore::kUtf8Mark.size());
    }
    const std::string_view declaration =
        document.starts_with("<?xml") ? document.substr(0, document.find("?>")) : "";
    const std::size_t place = declaration.find(name);
    if (place == std::string_view::npos) {
        return {};
    }
    const std::size_t begin = declaration.find_first_of("'\"", place);
    const std::size_t end = declaration.find_first_of("'\"", begin + 1);
    if (begin == std::string_view::npos || end == std::string_view::npos) {
        return {};
    }
    return ToLower(declaration.substr(begin + 1, end - begin - 1));
}

bool StatesUtf8(std::string_view document) {
    const std::string stated = StatedInDeclaration(document, "encoding");
    return stated.empty() || stated == "utf-8" || stated == "utf8";
}

kelcore::uint64 CountLineEnds(std::string_view text) {
    kelcore::uint64 count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool firstOfPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if ((text[i] == '\n' || text[i] == '\r') && !firstOfPair) {
            ++count;
        }
    }
    return count;
}

kelcore::uint64 CountCharacters(std::string_view text) {
    const auto inside = std::count_if(text.begin(), text.end(), IsContinuation);
    return text.size() - static_cast<std::size_t>(inside);
}

kelcore::uint64 ColumnOf(std::string_view document, std::size_t offset) {
    std::string_view line = document.substr(0, offset);
    line.remove_prefix(line.find_last_of("\r\n") + 1);
    if (line.data() == document.data() && line.starts_with(kelcore::kUtf8Mark)) {
        line.remove_prefix(kelcore::kUtf8Mark.size());
    }
    return CountCharacters(line) + 1;
}

std::size_t CharacterSize(std::string_view text) {
    const kelcore::unicode::Utf8Part part = kelcore::unicode::FirstPart(text);
    return part.wellFormed && !kelcore::unicode::IsSurrogate(part.codePoint) ? part.length : 0;
}

std::optional<std::size_t> FindMalformedUtf8(std::string_view document) {
    if (!HasByteSizedMarkup(document) || !StatesUtf8(document)) {
        return std::nullopt;
    }
    for (std::size_t offset = 0; offset < document.size();) {
        const std::size_t size = CharacterSize(document.substr(offset));
        if (size == 0) {
            return offset;
        }
        offset += size;
    }
    return std::nullopt;
}

}  // namespace toolkit
