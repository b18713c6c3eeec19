#include "reference_host/LoggedMessage.h"

#include <cstdio>
#include <utility>

#include "platform/kelcore/Strings.h"

namespace refhost {
namespace {

/// Separates what is wrong from what to do.
constexpr std::string_view kAdvice = "; ";

}  // namespace

LoggedMessage ParseLoggedMessage(std::u16string_view logged, std::u16string_view path) {
    std::string text = kelcore::UTF16to8(logged.substr(0, logged.find_last_not_of(u'\n') + 1));
    unsigned long long line = 0;
    unsigned long long column = 0;
    int end = 0;
    if (std::sscanf(text.c_str(), "XML %*[A-Z ]: (line: %llu, col: %llu) %n", &line, &column,
                    &end) != 2 ||
        end == 0) {
        return {.text = std::move(text)};
    }
    text.erase(0, static_cast<std::size_t>(end));
    const std::string origin = "[ " + kelcore::UTF16to8(path) + "] ";
    if (text.starts_with(origin)) {
        text.erase(0, origin.size());
    }
    const std::size_t advice = text.starts_with(kRefused) ? text.find(kAdvice) : text.npos;
    if (advice == text.npos) {
        return {line, column, std::move(text)};
    }
    return {line, column, text.substr(0, advice), text.substr(advice + kAdvice.size())};
}

}  // namespace refhost
