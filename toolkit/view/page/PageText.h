#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <orvo/Json.h>

/// Texts as they may stand in a page.
namespace orvo::page {

/// Appends a text as JSON that may stand in a script element: `<` and the separators that end a
/// line in a script stand as escapes. Surrogates and malformed UTF-8 become U+FFFD.
void AppendJsonText(std::string& out, std::string_view text);

/// A text as the content of an element.
std::string AsMarkup(std::string_view text);

/// Passes JSON on as it may stand in a script element, without its indents.
class ScriptSafeJson {
public:
    explicit ScriptSafeJson(const TextSink& sink) : sink_(sink) {}

    void operator()(std::string_view block);

private:
    /// A byte of U+2028 and U+2029 that may be the start of either, or none.
    void PassHeld();
    void Take(char character);

    const TextSink& sink_;
    std::string out_{};
    std::string held_{};
    bool atLineStart_ = false;
};

}  // namespace orvo::page
