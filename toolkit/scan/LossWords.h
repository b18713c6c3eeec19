#pragma once

#include <string>
#include <string_view>

/// The wording of losses.
namespace toolkit {

/// An element by its name.
std::string Tag(std::u16string_view name);

/// A text in quotes, on one line and short enough for a message.
std::string Quoted(std::u16string_view text);

/// The value of an attribute of an element.
std::string ValueOf(std::u16string_view attribute, std::u16string_view element,
                    std::u16string_view value);

}  // namespace toolkit
