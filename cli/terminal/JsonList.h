#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace cli {

/// The text of a value. What is not UTF-8 (an unpaired surrogate, a byte of a name) is U+FFFD.
/// @param indent  -1: on one line
std::string DumpJson(const nlohmann::ordered_json& value, int indent = -1);

/// Prints values one by one, as soon as each is known.
class JsonList {
public:
    enum class Form {
        Array,  ///< like the whole array printed at once
        Lines,  ///< a value per line, without the array
    };

    explicit JsonList(Form form) : form_(form) {}

    void Add(const nlohmann::ordered_json& value);

    /// Ends the array, even an empty one.
    void End();

private:
    Form form_;
    bool isFirst_ = true;
};

}  // namespace cli
