#include "toolkit/interchange/rpp/RppText.h"

#include <algorithm>

namespace toolkit::interchange {

std::string QuotedForRpp(std::string_view text) {
    constexpr std::string_view kMarks = "\"'`";
    std::string line(text);
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
    std::ranges::replace_if(line, isControl, ' ');
    const auto isAbsent = [&](char mark) { return line.find(mark) == line.npos; };
    const auto* const mark = std::ranges::find_if(kMarks, isAbsent);
    if (mark == kMarks.end()) {
        std::ranges::replace(line, kMarks.back(), kMarks[1]);
        return kMarks.back() + line + kMarks.back();
    }
    return *mark + line + *mark;
}

void RppText::Close() {
    --depth_;
    Put("", ">");
}

void RppText::Put(std::string_view before, std::string_view text) {
    out_.Write(fmt::format("{:{}}{}{}\n", "", 2 * depth_, before, text));
}

}  // namespace toolkit::interchange
