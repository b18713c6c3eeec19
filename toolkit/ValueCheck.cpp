#include "toolkit/ValueCheck.h"

#include <algorithm>
#include <concepts>
#include <string>

#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Types.h"
#include "platform/tbcore/MediaHandlers.h"

namespace toolkit {
namespace {

using tses::ValueKind;
using Words = std::span<const std::u16string_view>;

template <class Number>
bool IsNumber(std::u16string_view text) {
    Number ignored{};
    return kelcore::StringToNumber(text, ignored);
}

/// A number that is too small for its type reads as 0.
template <std::floating_point Real>
bool IsNumber(std::u16string_view text) {
    const std::u16string_view digits = text.substr(0, text.find_first_of(u"eE"));
    Real value{};
    return kelcore::StringToNumber(text, value) &&
           (value != 0 || digits.find_first_of(u"123456789") == digits.npos);
}

template <class Number>
bool IsReal(std::u16string_view text) {
    constexpr std::u16string_view kBlanks = u" \t\n\v\f\r";
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    std::u16string number(text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin));
    std::replace(number.begin(), number.end(), u',', u'.');
    return IsNumber<Number>(number);
}

bool IsWord(Words words, std::u16string_view text) {
    return std::find(words.begin(), words.end(), text) != words.end();
}

/// A reader accepts any number; a session file gets the last word for a number without a word.
bool IsNumberOfWord(Words words, std::u16string_view text, Target target) {
    kelcore::uint32 place = 0;
    return kelcore::StringToNumber(text, place) && (target == Target::Json || place < words.size());
}

bool AreWords(Words words, std::u16string_view text) {
    while (!text.empty()) {
        const std::u16string_view word = text.substr(0, text.find(u' '));
        if (!IsWord(words, word)) {
            return false;
        }
        text.remove_prefix(std::min(word.size() + 1, text.size()));
    }
    return true;
}

bool IsBoolean(std::u16string_view text) {
    return text == u"true" || text == u"false" || text == u"0";
}

bool IsHandlerName(std::u16string_view text) {
    std::u16string_view ignored;
    return tbcore::TranslateFromHumanReadableMediaHandler(text, ignored);
}

}  // namespace

bool IsValue(ValueKind kind, Words words, std::u16string_view text, Target target) {
    switch (kind) {
        case ValueKind::Text:
            return true;
        case ValueKind::Unsigned:
        case ValueKind::Signed:
            return IsNumber<kelcore::int32>(text);
        case ValueKind::Long:
            return IsNumber<kelcore::int64>(text);
        case ValueKind::Real:
            return IsReal<double>(text);
        case ValueKind::Real32:
            return IsReal<float>(text);
        case ValueKind::ExactReal32:
            return IsNumber<float>(text);
        case ValueKind::Boolean:
            return IsBoolean(text);
        case ValueKind::BooleanOr1:
            return IsBoolean(text) || text == u"1";
        case ValueKind::Keyword:
            return IsWord(words, text);
        case ValueKind::KeywordOrNumber:
            return IsWord(words, text) || IsNumberOfWord(words, text, target);
        case ValueKind::Keywords:
            return AreWords(words, text);
        case ValueKind::HandlerName:
            return IsHandlerName(text);
    }
    return false;
}

}  // namespace toolkit
