#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "session/Schema.h"

namespace orvo::test {

/// Makes values of the model in which every field differs from its default and from its neighbours.
class Filler {
public:
    template <class Value>
    Value Make() {
        Value value{};
        Fill(value);
        return value;
    }

private:
    static void Fill(bool& value) { value = !value; }
    template <class Number>
    requires std::is_arithmetic_v<Number>
    void Fill(Number& value) { value = static_cast<Number>(++last_ % 100 + 150); }
    void Fill(std::string& value) { value = "text " + std::to_string(++last_); }
    template <class Code>
    requires std::is_enum_v<Code>
    void Fill(Code& code) { code = static_cast<Code>(++last_ % 100 + 150); }
    template <class Element>
    void Fill(std::vector<Element>& value) {
        Fill(value.emplace_back());
        Fill(value.emplace_back());
    }
    template <class Held>
    void Fill(std::optional<Held>& value) {
        Fill(value.emplace());
    }
    template <class Held>
    void Fill(std::map<std::uint32_t, Held>& value) {
        Fill(value[0]);
        Fill(value[2]);
    }
    template <class Struct>
    requires requires { Schema<Struct>::kRows; }
    void Fill(Struct& value) {
        ForEachRow<Struct>([&](const auto& row) { Fill(value.*row.member); });
    }

    unsigned last_ = 0;
};

}  // namespace orvo::test
