#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test {

/// A row of a section's table of attributes, each cell as it stands there.
struct PageAttribute {
    std::string name;
    std::string type;
    std::string defaultText;
    std::string read;
    std::string written;

    bool IsRead() const { return read == "yes"; }

    /// The words of a type that is a choice of keywords; none for any other type.
    std::vector<std::string> Keywords() const;
};

/// What docs/format.md says of an element in a place, or of several that are alike.
struct PageSection {
    std::string anchor;
    std::vector<std::string> names;
    std::vector<std::string> parents;   ///< anchors, as in "In"
    std::vector<std::string> children;  ///< anchors, as in "Holds"
    std::string holds;
    std::string text;
    std::string read;
    std::string written;
    std::vector<PageAttribute> attributes;  ///< those of another section included
    std::string like;                       ///< the anchor of that section; empty: none

    const PageAttribute* FindAttribute(std::string_view name) const;
};

/// docs/format.md, as data.
class FormatPage {
public:
    FormatPage();

    const std::vector<PageSection>& Sections() const { return sections_; }
    /// The section with that anchor. Throws if there is none.
    const PageSection& Section(std::string_view anchor) const;
    const PageSection& Root() const { return Section("orvo"); }
    /// The section of an element of that name that stands in `parent`; null if it may not.
    const PageSection* Child(const PageSection& parent, std::string_view name) const;

    /// The pairs of parent and child in the tree of names.
    const std::vector<std::pair<std::string, std::string>>& Tree() const { return tree_; }
    /// The pairs of parent and child that are written and not read.
    const std::vector<std::pair<std::string, std::string>>& WrittenInVain() const {
        return writtenInVain_;
    }

private:
    void ReadLine(const std::string& line);
    void ReadTreeLine(const std::string& line);
    void ReadSectionLine(PageSection& section, const std::string& line);
    void Inherit(PageSection& section) const;

    std::vector<PageSection> sections_;
    std::vector<std::pair<std::string, std::string>> tree_;
    std::vector<std::pair<std::string, std::string>> writtenInVain_;
    std::vector<std::string> openInTree_;
    bool inTree_ = false;
    std::string table_;  // the first cell of the table that is being read; empty: none is
};

}  // namespace test
