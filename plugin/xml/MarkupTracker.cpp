#include "plugin/xml/MarkupTracker.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace tses {
namespace {

using Kind = MarkupTracker::Kind;

struct Delimited {
    std::string_view begin;
    std::string_view end;
    Kind kind;
};

constexpr Delimited kDelimited[] = {
    {"<![CDATA[", "]]>", Kind::Section},
    {"<!DOCTYPE", "", Kind::DocumentType},
    {"<!--", "-->", Kind::Section},
    {"<?", "?>", Kind::Tag},
};
constexpr std::size_t kLongestBegin = kDelimited[0].begin.size();

constexpr std::size_t kBlockSize = std::size_t{16} * 1024;
using Block = std::array<char, kBlockSize>;

std::size_t ReadAt(int descriptor, kelcore::uint64 offset, Block& block, std::size_t size) {
    ssize_t got = 0;
    do {
        got = ::pread(descriptor, block.data(), size, static_cast<off_t>(offset));
    } while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The columns of a character that begins with this byte. The parser counts UTF-16 units.
unsigned ColumnsOf(char byte) {
    return static_cast<unsigned char>(byte) >= 0xF0 ? 2 : 1;
}

void Pass(std::string_view text, DocumentPlace& place) {
    for (const char byte : text) {
        if (byte == '\n') {
            place = {place.line + 1, 1};
        } else if (!ContinuesCharacter(byte)) {
            place.column += ColumnsOf(byte);
        }
    }
}

}  // namespace

/// Advances to `offset`, or as far towards it as the markup can be understood. Calls `visit` with
/// what each step passed, and stops if `visit` returns false.
template <class Visit>
void MarkupTracker::AdvanceTo(kelcore::uint64 offset, Visit visit) {
    Block block;
    bool advanced = true;
    while (advanced && position_ < offset) {
        const auto wanted = std::min<kelcore::uint64>(offset - position_, kBlockSize);
        const std::size_t got =
            ReadAt(descriptor_, position_, block, static_cast<std::size_t>(wanted));
        const std::string markup = MarkupOf({block.data(), got}, units_);
        std::string_view rest = markup;
        advanced = false;
        while (const std::size_t step = Advance(rest)) {
            advanced = true;
            position_ += step * units_.size;
            if (!visit(rest.substr(0, step))) {
                return;
            }
            rest.remove_prefix(step);
        }
    }
}

Kind MarkupTracker::KindAt(kelcore::uint64 offset) {
    AdvanceTo(offset, [](std::string_view) { return true; });
    return kind_;
}

std::optional<DocumentPlace> MarkupTracker::FindDocumentType(kelcore::uint64 offset) {
    AdvanceTo(offset, [&](std::string_view passed) {
        if (kind_ == Kind::DocumentType) {
            return false;
        }
        Pass(passed, place_);
        return !FoundRoot();
    });
    return kind_ == Kind::DocumentType ? std::optional(place_) : std::nullopt;
}

/// Takes in what can be understood without what follows, and returns the length of that.
std::size_t MarkupTracker::Advance(std::string_view markup) {
    switch (kind_) {
        case Kind::Text:
            return AdvanceInText(markup);
        case Kind::Section:
            return AdvanceBehind(markup, Kind::Text);
        case Kind::Tag:
            return end_.empty() ? AdvanceInTag(markup)
                                : AdvanceBehind(markup, end_ == "?>" ? Kind::Text : Kind::Tag);
        case Kind::DocumentType:
            break;
    }
    return 0;
}

std::size_t MarkupTracker::AdvanceInText(std::string_view markup) {
    const std::size_t open = std::min(markup.find('<'), markup.size());
    if (open != 0 || markup.size() < kLongestBegin) {
        return open;
    }
    begin_ = position_;
    values_ = 0;
    for (const Delimited& delimited : kDelimited) {
        if (markup.starts_with(delimited.begin)) {
            kind_ = delimited.kind;
            end_ = delimited.end;
            return delimited.begin.size();
        }
    }
    kind_ = Kind::Tag;
    return 1;
}

std::size_t MarkupTracker::AdvanceBehind(std::string_view markup, Kind next) {
    const std::size_t found = markup.find(end_);
    if (found == std::string_view::npos) {
        // The last characters may belong to the end mark.
        return markup.size() - std::min(markup.size(), end_.size() - 1);
    }
    const std::size_t step = found + end_.size();
    kind_ = next;
    end_ = {};
    return step;
}

std::size_t MarkupTracker::AdvanceInTag(std::string_view markup) {
    const std::size_t found = markup.find_first_of("\"'>");
    if (found == std::string_view::npos) {
        return markup.size();
    }
    if (markup[found] == '>') {
        kind_ = Kind::Text;
    } else {
        end_ = markup[found] == '"' ? "\"" : "'";
        ++values_;
    }
    return found + 1;
}

}  // namespace tses
