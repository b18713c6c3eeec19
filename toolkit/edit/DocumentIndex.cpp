#include "toolkit/edit/DocumentIndex.h"

#include <algorithm>
#include <optional>
#include <string>

#include "format/Elements.h"
#include "toolkit/scan/Values.h"

namespace toolkit {
namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";

/// Markup that contains no elements, and how it ends.
struct Marks {
    std::string_view begin;
    std::string_view end;
};
constexpr Marks kComment = {"<!--", "-->"};
constexpr Marks kSection = {kSectionBegin, kSectionEnd};
constexpr Marks kInstruction = {"<?", "?>"};

/// Where the markup ends that begins there; there itself if it is a tag.
std::size_t EndOfOther(std::string_view markup, std::size_t begin) {
    for (const Marks& marks : {kComment, kSection, kInstruction}) {
        if (markup.substr(begin).starts_with(marks.begin)) {
            return markup.find(marks.end, begin + marks.begin.size()) + marks.end.size();
        }
    }
    return begin;
}

/// The comment, section or instruction that begins there; no value for others.
std::optional<Piece> PieceAt(std::string_view markup, std::size_t begin) {
    const std::string_view rest = markup.substr(begin);
    const auto within = [&](PieceKind kind, const Marks& marks) {
        const std::size_t end = EndOfOther(markup, begin) - marks.end.size();
        return Piece{kind, {begin + marks.begin.size(), end}, 0};
    };
    if (rest.starts_with(kComment.begin)) {
        return within(PieceKind::Comment, kComment);
    }
    if (rest.starts_with(kSection.begin)) {
        return within(PieceKind::Section, kSection);
    }
    const bool isDeclaration =
        begin == 0 && rest.starts_with("<?xml") && kWhiteSpace.find(rest[5]) != rest.npos;
    if (!rest.starts_with(kInstruction.begin) || isDeclaration) {
        return std::nullopt;
    }
    Piece piece = within(PieceKind::Instruction, kInstruction);
    piece.content.begin = std::min(markup.find_first_of(kWhiteSpace, begin), piece.content.end);
    return piece;
}

/// Behind the ">" of the tag that begins there. A ">" may also stand in a value.
std::size_t EndOfTag(std::string_view markup, std::size_t begin) {
    std::size_t at = begin;
    while (markup[at] != '>') {
        at = markup.find_first_of("\"'>", at + 1);
        if (markup[at] != '>') {
            at = markup.find(markup[at], at + 1);
        }
    }
    return at + 1;
}

/// Without its prefix.
std::string_view LocalName(std::string_view name) {
    return name.substr(name.find(':') + 1);
}

const tses::Element* KindOf(std::string_view name, const tses::Element* parent) {
    return parent != nullptr
               ? tses::FindElement(std::u16string(name.begin(), name.end()), parent->state)
               : nullptr;
}

}  // namespace

/// Finds the elements in one pass.
class DocumentIndex::Builder {
public:
    Builder(std::string_view markup, std::vector<ElementExtent>& elements)
        : markup_(markup), elements_(elements) {}

    void Run() {
        for (std::size_t at = markup_.find('<'); at != markup_.npos; at = markup_.find('<', at)) {
            if (const std::size_t end = EndOfOther(markup_, at); end != at) {
                at = end;
            } else if (markup_[at + 1] == '/') {
                End(at);
                at = markup_.find('>', at);
            } else {
                at = Start(at);
            }
        }
    }

private:
    std::size_t Start(std::size_t begin) {
        const std::size_t endOfName = markup_.find_first_of(" \t\r\n/>", begin);
        const Extent name = {begin + 1, endOfName};
        const std::size_t end = EndOfTag(markup_, begin);
        const bool isEmptyTag = markup_[end - 2] == '/';
        const std::size_t number = elements_.size();
        elements_.push_back({.kind = KindOf(name),
                             .parent = open_.empty() ? number : open_.back(),
                             .name = name,
                             .startTag = {begin, end},
                             .endTag = end,
                             .isEmptyTag = isEmptyTag});
        if (!isEmptyTag) {
            open_.push_back(number);
        }
        return end;
    }

    void End(std::size_t begin) {
        elements_[open_.back()].endTag = begin;
        open_.pop_back();
    }

    const tses::Element* KindOf(Extent name) const {
        const std::string_view text = LocalName(markup_.substr(name.begin, name.Size()));
        return open_.empty() ? &tses::kRootElement
                             : toolkit::KindOf(text, elements_[open_.back()].kind);
    }

    std::string_view markup_;
    std::vector<ElementExtent>& elements_;
    std::vector<std::size_t> open_;
};

DocumentIndex::DocumentIndex(std::string_view markup) : markup_(markup) {
    Builder(markup, elements_).Run();
}

std::vector<AttributeExtent> DocumentIndex::AttributesOf(const ElementExtent& element) const {
    std::vector<AttributeExtent> attributes;
    std::size_t at = markup_.find_first_not_of(kWhiteSpace, element.name.end);
    while (markup_[at] != '>' && markup_[at] != '/') {
        const std::size_t endOfName = markup_.find_first_of(" \t\r\n=", at);
        const std::size_t open = markup_.find_first_of("\"'", endOfName);
        const char quote = markup_[open];
        const std::size_t close = markup_.find(quote, open + 1);
        attributes.push_back({{at, endOfName}, {open + 1, close}, quote});
        at = markup_.find_first_not_of(kWhiteSpace, close + 1);
    }
    return attributes;
}

std::vector<TextExtent> DocumentIndex::TextsOf(const ElementExtent& element) const {
    std::vector<TextExtent> texts;
    if (element.isEmptyTag) {
        return texts;
    }
    std::size_t at = element.startTag.end;
    while (true) {
        const std::size_t markup = markup_.find('<', at);
        texts.push_back({{at, markup}});
        if (markup == element.endTag) {
            return texts;
        }
        at = EndOfOther(markup_, markup);
        if (markup_.substr(markup).starts_with(kSection.begin)) {
            texts.push_back({{markup, at}, true});
        }
    }
}

std::vector<Piece> DocumentIndex::Pieces() const {
    std::vector<Piece> pieces;
    std::vector<std::size_t> open = {0};
    std::size_t next = 0;  // element
    std::size_t at = 0;
    while (at < markup_.size()) {
        const std::size_t end = std::min(markup_.find('<', at), markup_.size());
        if (end != at) {
            pieces.push_back({PieceKind::Text, {at, end}, open.back()});
            at = end;
        } else if (const auto piece = PieceAt(markup_, at)) {
            at = EndOfOther(markup_, at);
            pieces.push_back({piece->kind, piece->content, open.back()});
        } else if (EndOfOther(markup_, at) != at) {
            at = EndOfOther(markup_, at);  // the XML declaration
        } else if (markup_[at + 1] == '/') {
            open.pop_back();
            at = markup_.find('>', at) + 1;
        } else {
            const ElementExtent& element = elements_[next];
            if (!element.isEmptyTag) {
                open.push_back(next);
            }
            ++next;
            at = element.startTag.end;
        }
    }
    return pieces;
}

}  // namespace toolkit
