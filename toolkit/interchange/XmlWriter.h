#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit::interchange {

/// Writes an XML document (UTF-8), indented by two blanks, as its parts become known.
///
///     XmlWriter xml(sink);
///     xml.Open("Clip").Attribute("time", 1.5).Attribute("name", name);
///     xml.Close();
class XmlWriter {
public:
    using Sink = std::function<void(std::string_view)>;

    /// Writes the declaration.
    explicit XmlWriter(Sink sink);

    /// Begins an element.
    /// @param name  stays until the element is closed
    XmlWriter& Open(std::string_view name);

    /// Of the element that was opened last, before anything in it.
    XmlWriter& Attribute(std::string_view name, std::string_view value);
    XmlWriter& Attribute(std::string_view name, const char* value) {
        return Attribute(name, std::string_view(value));
    }
    /// As the shortest text that reads back to the same value.
    XmlWriter& Attribute(std::string_view name, double value);
    /// "true" or "false"
    XmlWriter& Attribute(std::string_view name, std::same_as<bool> auto value) {
        return Attribute(name, std::string_view(value ? "true" : "false"));
    }
    template <std::integral Number>
    requires(!std::same_as<Number, bool>) XmlWriter& Attribute(std::string_view name,
                                                               Number value) {
        return Attribute(name, std::string_view(std::to_string(value)));
    }

    /// What XML cannot carry becomes U+FFFD.
    void Text(std::string_view text);

    /// Ends the element that was opened last.
    void Close();

    /// How many characters became U+FFFD so far.
    std::size_t ReplacedCharacters() const { return replaced_; }

private:
    void EndTag();
    void Indent();
    void Escape(std::string_view text, bool isAttribute);
    void Flush();

    Sink sink_;
    std::string block_;
    std::vector<std::string_view> open_;
    bool isTagOpen_ = false;
    std::size_t replaced_ = 0;
    bool hasText_ = false;  // directly in the element that is open
};

}  // namespace toolkit::interchange
