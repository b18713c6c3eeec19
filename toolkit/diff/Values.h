#pragma once

#include <string>
#include <string_view>

#include "session/json/Encode.h"
#include "session/json/MessageText.h"

/// Values and members as a person reads them.
namespace orvo::diff {

/// A key of the model as words: "audioChannelType" as "audio channel type".
std::string InWords(std::string_view key);

/// A name in quotation marks.
std::string Quoted(std::string_view name);

/// A value, shortened to a few words.
template <class Value>
std::string Shown(const Value& value) {
    constexpr std::size_t kLongest = 60;
    if constexpr (std::is_same_v<Value, bool>) {
        return value ? "on" : "off";
    } else if constexpr (HasWords<Value>) {
        const auto word = WordOf(value);
        return word ? std::string(*word)
                    : json::Encoded(value, {json::JsonWriter::Layout::Compact});
    } else {
        return json::Shortened(json::Encoded(value, {json::JsonWriter::Layout::Compact}), kLongest);
    }
}

}  // namespace orvo::diff
