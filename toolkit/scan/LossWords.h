#pragma once

#include <string>
#include <string_view>

/// The wording of losses.
namespace toolkit {

/// The tag of an element with this name.
std::string Tag(std::u16string_view name);

/// How much of a long text is shown.
enum class Length { Short, Whole };

/// A text in quotes, on one line. A short one has "..." in its middle, because the end of a path
/// distinguishes it from others.
std::string Quoted(std::u16string_view text, Length length = Length::Short);

/// The value of an attribute of an element.
std::string ValueOf(std::u16string_view attribute, std::u16string_view element,
                    std::u16string_view value, Length length = Length::Short);

}  // namespace toolkit
