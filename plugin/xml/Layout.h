#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tses::xml {

/// Line ends and blanks before a tag.
struct Indentation {
    std::uint32_t lineEnds = 0;
    std::uint32_t blanks = 0;

    bool operator==(const Indentation&) const = default;
};

/// Where the XML library's serialiser breaks lines and how far it indents, with "pretty printing".
/// A tag goes to a line of its own, two blanks for each level; children of the document element
/// also have an empty line before them. A text of nothing but white space, with a line end in it,
/// stands for the line break before the next tag, and its length for a part of the indentation.
class Layout {
public:
    /// The line that a tag is on, to compare with.
    using Line = std::uint64_t;

    /// What comes before a start tag. `level` is 0 for the document element.
    Indentation BeforeStart(std::uint32_t level) {
        Indentation indentation;
        if (lineEndInText_) {
            lineEndInText_ = false;
        } else {
            indentation.lineEnds = level == 1 ? 2 : 1;
        }
        line_ += indentation.lineEnds;
        indentation.blanks = Blanks(level);
        return indentation;
    }

    /// What comes before the end tag of an element that has content.
    /// @param start  the line of its start tag
    Indentation BeforeEnd(std::uint32_t level, Line start) {
        Indentation indentation;
        if (start == line_) {
            return indentation;
        }
        if (lineEndInText_) {
            lineEndInText_ = false;
        } else {
            ++indentation.lineEnds;
        }
        indentation.lineEnds += level == 0 ? 1 : 0;
        line_ += indentation.lineEnds;
        indentation.blanks = Blanks(level);
        return indentation;
    }

    /// Ordinary text: one run of characters without references.
    void PassText(std::u16string_view text);

    Line CurrentLine() const { return line_; }

private:
    std::uint32_t Blanks(std::uint32_t level) {
        const std::uint32_t present = whiteSpaceInText_ / 2;
        whiteSpaceInText_ = 0;
        return present < level ? 2 * (level - present) : 0;
    }

    Line line_ = 0;
    bool lineEndInText_ = false;
    std::uint32_t whiteSpaceInText_ = 0;  // after the line end in the last text
};

}  // namespace tses::xml
