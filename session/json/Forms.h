#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "session/Schema.h"
#include "session/json/Decode.h"

/// The model's values for a parser that fills them part by part: the parts of each type, with the
/// type itself erased.
namespace orvo::json {

struct Form;

/// A value that is to be filled.
struct Target {
    void* value;
    const Form* form;
};

/// A key of a struct.
struct Member {
    std::string_view key;
    std::string_view formerKey;  ///< may stand in its place; may be empty

    bool Is(std::string_view name) const {
        return name == key || (name == formerKey && !name.empty());
    }

    Target (*of)(void* value);
};

/// The most members that a struct may have.
inline constexpr std::size_t kMostMembers = 64;

/// The operations on values of one type. Operations that the type does not have are null or empty.
struct Form {
    /// Takes a value without parts. Refuses an empty object or list, which it gets in place of one
    /// that the type cannot be.
    /// @throws WrongValue
    void (*take)(void* value, const ParsedJson& json);

    /// Makes the value ready for its parts and returns the value that gets them: an optional makes
    /// the value that it holds.
    Target (*open)(void* value);

    /// Of a list: adds an element.
    Target (*addElement)(void* list);

    /// Of a table: adds an entry. Returns no target for a key that was there before.
    /// @throws WrongValue for a key that is not a number
    Target (*addEntry)(void* table, std::string_view key);

    std::span<const Member> members;  ///< of a struct
};

/// For each type: its `Form`, as `kForm`.
template <class Value>
struct FormOf;

template <class Value>
Target TargetOf(Value& value) {
    return {&value, &FormOf<Value>::kForm};
}

// Single values have no parts.
template <class Value>
struct FormOf {
    static void Take(void* value, const ParsedJson& json) {
        Decode(json, *static_cast<Value*>(value));
    }
    static constexpr Form kForm{Take, nullptr, nullptr, nullptr, {}};
};

template <HasSchema Struct>
struct FormOf<Struct> {
    static constexpr std::size_t kCount = kRowCount<Struct>;
    static_assert(kCount <= kMostMembers);

    static void Take(void*, const ParsedJson& json) { FailAtValue(json, "give an object"); }
    static Target Open(void* value) { return {value, &kForm}; }

    template <std::size_t kIndex>
    static Target MemberOf(void* value) {
        return TargetOf(static_cast<Struct*>(value)->*kRow<Struct, kIndex>.member);
    }
    template <std::size_t... kIndices>
    static constexpr std::array<Member, kCount> MembersOf(std::index_sequence<kIndices...>) {
        return {{{kRow<Struct, kIndices>.key, kRow<Struct, kIndices>.formerKey,
                  MemberOf<kIndices>}...}};
    }

    static constexpr auto kMembers = MembersOf(std::make_index_sequence<kCount>());
    static constexpr Form kForm{Take, Open, nullptr, nullptr, kMembers};
};

template <class Element>
requires(!std::is_same_v<Element, kelcore::byte>) struct FormOf<std::vector<Element>> {
    static void Take(void*, const ParsedJson& json) { FailAtValue(json, "give a list"); }
    static Target Open(void* value) {
        static_cast<std::vector<Element>*>(value)->clear();
        return {value, &kForm};
    }
    static Target AddElement(void* list) {
        return TargetOf(static_cast<std::vector<Element>*>(list)->emplace_back());
    }
    static constexpr Form kForm{Take, Open, AddElement, nullptr, {}};
};

template <class Held>
struct FormOf<std::map<kelcore::uint32, Held>> {
    using Table = std::map<kelcore::uint32, Held>;

    static void Take(void*, const ParsedJson& json) { FailAtValue(json, "give an object"); }
    static Target Open(void* value) {
        static_cast<Table*>(value)->clear();
        return {value, &kForm};
    }
    static Target AddEntry(void* value, std::string_view key) {
        auto& table = *static_cast<Table*>(value);
        const kelcore::uint32 number = DecodeNumberKey(key);
        const std::size_t before = table.size();
        const auto entry = table.try_emplace(table.end(), number);
        return table.size() == before ? Target{} : TargetOf(entry->second);
    }
    static constexpr Form kForm{Take, Open, nullptr, AddEntry, {}};
};

template <class Held>
struct FormOf<std::optional<Held>> {
    static void Take(void* value, const ParsedJson& json) {
        auto& optional = *static_cast<std::optional<Held>*>(value);
        if (json.is_null()) {
            optional.reset();
        } else {
            FormOf<Held>::kForm.take(&optional.emplace(), json);
        }
    }
    static Target Open(void* value) {
        Held& held = static_cast<std::optional<Held>*>(value)->emplace();
        const auto open = FormOf<Held>::kForm.open;
        return open != nullptr ? open(&held) : TargetOf(held);
    }
    static constexpr Form kForm{Take, Open, nullptr, nullptr, {}};
};

}  // namespace orvo::json
