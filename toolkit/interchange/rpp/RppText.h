#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "toolkit/interchange/OutputFile.h"

namespace toolkit::interchange {

/// A text between the first quotation mark of " ' ` that is not in it, on one line.
std::string QuotedForRpp(std::string_view text);

/// Writes the lines of a project: blocks that begin with "<NAME" and end with ">".
class RppText {
public:
    explicit RppText(OutputFile& out) : out_(out) {}

    template <class... Values>
    void Line(fmt::format_string<Values...> text, Values&&... values) {
        Put("", fmt::format(text, std::forward<Values>(values)...));
    }

    template <class... Values>
    void Open(fmt::format_string<Values...> text, Values&&... values) {
        Put("<", fmt::format(text, std::forward<Values>(values)...));
        ++depth_;
    }

    void Close();

private:
    void Put(std::string_view before, std::string_view text);

    OutputFile& out_;
    std::size_t depth_ = 0;
};

}  // namespace toolkit::interchange
