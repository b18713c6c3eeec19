#include "toolkit/check/Words.h"

#include <fmt/format.h>

#include "platform/kelcore/Strings.h"
#include "toolkit/scan/LossWords.h"

namespace toolkit {

std::string InQuotes(const std::string& text) {
    return Quoted(kelcore::UTF8to16(text), Length::Whole);
}

std::string Named(const char* kind, std::uint32_t id, const std::string& name) {
    return name.empty() ? fmt::format("{} {}", kind, id)
                        : fmt::format("{} {} {}", kind, id, InQuotes(name));
}

}  // namespace toolkit
