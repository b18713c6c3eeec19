#include "tests/docs/FormatPage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <sstream>

#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"

namespace test {
namespace {

constexpr std::size_t kTreeIndent = 2;

/// Every piece of the text that stands between `begin` and the next `end`.
std::vector<std::string> Between(const std::string& text, std::string_view begin, char end) {
    std::vector<std::string> found;
    std::size_t at = text.find(begin);
    while (at != std::string::npos) {
        const std::size_t first = at + begin.size();
        const std::size_t last = std::min(text.find(end, first), text.size());
        found.push_back(text.substr(first, last - first));
        at = text.find(begin, last + 1);
    }
    return found;
}

std::vector<std::string> QuotedWords(const std::string& text) {
    return Between(text, "`", '`');
}

std::vector<std::string> LinkTargets(const std::string& text) {
    return Between(text, "](#", ')');
}

/// As Markdown makes it of a heading.
std::string AnchorOf(const std::string& heading) {
    std::string anchor;
    for (const char character : heading) {
        if (character == ' ') {
            anchor += '-';
        } else if (character != '`' && character != ',') {
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        }
    }
    return anchor;
}

/// The cells of "| a | b |".
std::vector<std::string> Cells(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream stream(line.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) {
        const std::size_t first = cell.find_first_not_of(' ');
        const std::size_t last = cell.find_last_not_of(' ');
        cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
    }
    return cells;
}

/// The rest of a line that begins with "- **NAME:** "; false for any other line.
bool ReadFact(const std::string& line, const std::string& name, std::string& fact) {
    const std::string begin = "- **" + name + ":** ";
    if (!line.starts_with(begin)) {
        return false;
    }
    fact = line.substr(begin.size());
    return true;
}

}  // namespace

std::vector<std::string> PageAttribute::Keywords() const {
    return QuotedWords(type);
}

const PageAttribute* PageSection::FindAttribute(std::string_view name) const {
    const auto found = std::ranges::find(attributes, name, &PageAttribute::name);
    return found != attributes.end() ? &*found : nullptr;
}

FormatPage::FormatPage() {
    std::istringstream lines(ReadFile(SourceFolder() / "docs/format.md"));
    for (std::string line; std::getline(lines, line);) {
        ReadLine(line);
    }
    for (PageSection& section : sections_) {
        Inherit(section);
    }
}

const PageSection& FormatPage::Section(std::string_view anchor) const {
    const auto found = std::ranges::find(sections_, anchor, &PageSection::anchor);
    if (found == sections_.end()) {
        throw std::out_of_range("docs/format.md has no section " + std::string(anchor));
    }
    return *found;
}

const PageSection* FormatPage::Child(const PageSection& parent, std::string_view name) const {
    for (const std::string& anchor : parent.children) {
        const PageSection& child = Section(anchor);
        if (std::ranges::count(child.names, name) != 0) {
            return &child;
        }
    }
    return nullptr;
}

void FormatPage::ReadLine(const std::string& line) {
    if (!line.starts_with("|")) {
        table_.clear();
    } else if (table_.empty()) {
        table_ = Cells(line).at(0);
    }
    if (line.starts_with("```")) {
        inTree_ = !inTree_;
    } else if (inTree_) {
        ReadTreeLine(line);
    } else if (line.starts_with("### `")) {
        sections_.emplace_back().anchor = AnchorOf(line.substr(4));
        sections_.back().names = QuotedWords(line);
    } else if (!sections_.empty()) {
        ReadSectionLine(sections_.back(), line);
    } else if (table_ == "Element" && line.starts_with("| `")) {
        writtenInVain_.emplace_back(QuotedWords(line)[1], QuotedWords(line)[0]);
    }
}

void FormatPage::ReadTreeLine(const std::string& line) {
    const std::size_t indent = line.find_first_not_of(' ');
    openInTree_.resize(indent / kTreeIndent);
    if (!openInTree_.empty()) {
        tree_.emplace_back(openInTree_.back(), line.substr(indent));
    }
    openInTree_.push_back(line.substr(indent));
}

void FormatPage::ReadSectionLine(PageSection& section, const std::string& line) {
    std::string fact;
    if (ReadFact(line, "In", fact)) {
        section.parents = LinkTargets(fact);
    } else if (ReadFact(line, "Holds", section.holds)) {
        section.children = LinkTargets(section.holds);
    } else if (line.starts_with("Attributes: those of ")) {
        section.like = LinkTargets(line).at(0);
    } else if (!ReadFact(line, "Text", section.text) && !ReadFact(line, "Read", section.read)) {
        ReadFact(line, "Written", section.written);
    }
    if (table_ == "Attribute" && line.starts_with("| `")) {
        const std::vector<std::string> cells = Cells(line);
        section.attributes.push_back(
            {QuotedWords(cells.at(0)).at(0), cells.at(1), cells.at(2), cells.at(3), cells.at(4)});
    }
}

void FormatPage::Inherit(PageSection& section) const {
    if (section.like.empty()) {
        return;
    }
    for (const PageAttribute& attribute : Section(section.like).attributes) {
        if (section.FindAttribute(attribute.name) == nullptr) {
            section.attributes.push_back(attribute);
        }
    }
}

}  // namespace test
