#include <cstdio>
#include <fstream>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "session/OwnIds.h"
#include "session/Schema.h"
#include "session/Words.h"
#include "session/json/Decode.h"
#include "session/json/Encode.h"
#include "session/json/RealTexts.h"

// orvo-print-json-schema FILE: writes the JSON Schema of a session's JSON, made from the model's
// rows.

namespace orvo::json {
namespace {

using nlohmann::ordered_json;

/// Whole numbers from 0 to 4294967295, in one spelling each.
constexpr char kNumberKeys[] =
    "^(0|[1-9][0-9]{0,8}|[1-3][0-9]{9}|4[01][0-9]{8}|42[0-8][0-9]{7}|429[0-3][0-9]{6}"
    "|4294[0-8][0-9]{5}|42949[0-5][0-9]{4}|429496[0-6][0-9]{3}|4294967[01][0-9]{2}"
    "|42949672[0-8][0-9]|429496729[0-5])$";

/// Base64 without blanks; bits that no byte uses are zero.
constexpr char kBase64[] =
    "^([A-Za-z0-9+/]{4})*([A-Za-z0-9+/][AQgw]==|[A-Za-z0-9+/]{2}[AEIMQUYcgkosw048]=)?$";

/// Passes a type without a value of it.
template <class Value>
struct Type {};

/// Describes types and the types of their parts. Describes a type with a name only once.
class SchemaMaker {
public:
    ordered_json Make() {
        const ordered_json session = Describe(Type<Session>());
        return {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                {"title", "A multitrack session"},
                {"$ref", session.at("$ref")},
                {"$defs", definitions_}};
    }

private:
    static ordered_json Describe(Type<bool>) { return {{"type", "boolean"}}; }
    static ordered_json Describe(Type<std::string>) { return {{"type", "string"}}; }
    ordered_json Describe(Type<std::int32_t>) { return Integer<std::int32_t>("i32"); }
    ordered_json Describe(Type<std::uint32_t>) { return Integer<std::uint32_t>("u32"); }
    ordered_json Describe(Type<std::int64_t>) { return Integer<std::int64_t>("i64"); }
    ordered_json Describe(Type<double>) { return Real("real", {{"type", "number"}}); }
    ordered_json Describe(Type<float>) {
        return Real("real32", {{"type", "number"},
                               {"exclusiveMinimum", -kBeyondSinglePrecision},
                               {"exclusiveMaximum", kBeyondSinglePrecision}});
    }
    ordered_json Describe(Type<std::vector<std::uint8_t>>) {
        return Named("bytes", [] {
            return ordered_json{
                {"type", "string"}, {"contentEncoding", "base64"}, {"pattern", kBase64}};
        });
    }

    template <HasWords Code>
    ordered_json Describe(Type<Code>) {
        ordered_json words = ordered_json::array();
        for (const Word<Code>& word : Words<Code>::kTable) {
            words.push_back(word.text);
        }
        if constexpr (kIsSwitch<Code>) {
            return {{"enum", words}};
        } else {
            return AnyOf({{"enum", words}}, Range(kLowestCode, kHighestCode));
        }
    }

    template <class Held>
    ordered_json Describe(Type<std::optional<Held>>) {
        return AnyOf(Describe(Type<Held>()), {{"type", "null"}});
    }

    template <class Element>
    ordered_json Describe(Type<std::vector<Element>>) {
        return {{"type", "array"}, {"items", Describe(Type<Element>())}};
    }

    template <class Held>
    ordered_json Describe(Type<std::map<std::uint32_t, Held>>) {
        return {{"type", "object"},
                {"patternProperties", {{kNumberKeys, Describe(Type<Held>())}}},
                {"additionalProperties", false}};
    }

    template <HasSchema Struct>
    ordered_json Describe(Type<Struct>) {
        return Named(Schema<Struct>::kName, [this] {
            ordered_json properties = ordered_json::object();
            const auto add = [&](const auto& row) { properties[row.key] = DescribeMember(row); };
            ForEachRow<Struct>(add);
            return ordered_json{
                {"type", "object"}, {"properties", properties}, {"additionalProperties", false}};
        });
    }

    template <class Struct, class Member>
    ordered_json DescribeMember(const Row<Struct, Member>& row) {
        ordered_json member = Describe(Type<Member>());
        if (*row.meaning != '\0') {
            member["description"] = row.meaning;
        }
        if constexpr (!HasSchema<Member>) {
            member["default"] = ordered_json::parse(
                Encoded(DefaultOf<Struct>().*row.member, {JsonWriter::Layout::Compact}));
        }
        if (IsListByOwnId(row.member)) {
            member["items"]["properties"]["id"]["maximum"] = kNoId - 1;
        }
        return member;
    }

    template <class Struct, class Member>
    static bool IsListByOwnId(Member Struct::*member) {
        const auto isIt = [member](const auto list) {
            if constexpr (std::is_same_v<decltype(member), decltype(list)>) {
                return member == list;
            } else {
                return false;
            }
        };
        return std::apply([&](const auto... lists) { return (isIt(lists) || ...); }, kListsByOwnId);
    }

    template <class Number>
    ordered_json Integer(const char* name) {
        using Limits = std::numeric_limits<Number>;
        return Named(name, [] { return Range(Limits::min(), Limits::max()); });
    }

    template <class Number>
    static ordered_json Range(Number lowest, Number highest) {
        return {{"type", "integer"}, {"minimum", lowest}, {"maximum", highest}};
    }

    ordered_json Real(const char* name, const ordered_json& number) {
        return Named(name, [&] {
            return AnyOf(number, {{"enum", {kNotANumber, kInfinity, kMinusInfinity}}});
        });
    }

    static ordered_json AnyOf(const ordered_json& one, const ordered_json& other) {
        return {{"anyOf", ordered_json::array({one, other})}};
    }

    /// What `make` makes, once, under a name to refer to.
    template <class Maker>
    ordered_json Named(const char* name, const Maker& make) {
        if (!definitions_.contains(name)) {
            definitions_[name] = nullptr;  // keeps it before its parts
            ordered_json made = make();
            definitions_[name] = std::move(made);
        }
        return {{"$ref", std::string("#/$defs/") + name}};
    }

    ordered_json definitions_ = ordered_json::object();
};

}  // namespace
}  // namespace orvo::json

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: orvo-print-json-schema FILE\n");
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary);
    file << orvo::json::SchemaMaker().Make().dump(2) << '\n';
    if (!file.flush()) {
        std::fprintf(stderr, "orvo-print-json-schema: %s cannot be written\n", argv[1]);
        return 1;
    }
    return 0;
}
