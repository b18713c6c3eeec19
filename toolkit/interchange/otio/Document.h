#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/json/Decode.h"
#include "toolkit/interchange/otio/Rate.h"

/// OpenTimelineIO as a tree that was checked for size and depth.
namespace toolkit::interchange::otio {

using orvo::json::ParsedJson;

/// What a document may be before it is refused.
struct DocumentLimits {
    std::size_t bytes = std::size_t{1} << 29;
    std::size_t values = 30'000'000;
    std::size_t depth = 200;
};

/// Parses a text. Also takes NaN and infinities as numbers, which become null.
/// @param file  for messages
/// @throws Failure  for what is no JSON or exceeds a limit, with its place
ParsedJson ParseDocument(std::string text, const std::filesystem::path& file,
                         const DocumentLimits& limits = {});

/// An object of the document and its place. Refers to the document.
class Node {
public:
    /// @throws Failure  if it is no object
    Node(const ParsedJson& value, std::string place, const std::filesystem::path& file);

    const ParsedJson& Value() const { return *value_; }
    const std::string& Place() const { return place_; }

    /// The name of its schema without its version: "Clip". Empty if it has none.
    std::string_view Schema() const;

    /// A member that is there and not null; null otherwise.
    const ParsedJson* Find(std::string_view key) const;

    /// A member that is an object; no value if it is absent or null.
    /// @throws Failure  if it is anything else
    std::optional<Node> Object(std::string_view key) const;

    /// The objects of a member that is a list; none if it is absent or null.
    /// @throws Failure  if it or an element is anything else
    std::vector<Node> Objects(std::string_view key) const;

    /// A text; empty if there is none.
    std::string Text(std::string_view key) const;

    /// Absent is true.
    bool Flag(std::string_view key) const;

    /// A finite number; no value if there is none.
    std::optional<double> Number(std::string_view key) const;

    /// @throws Failure  with this place
    [[noreturn]] void Refuse(const std::string& what) const;

private:
    const ParsedJson* value_;
    std::string place_;
    const std::filesystem::path* file_;
};

/// A stretch of time in samples of the session.
struct TimeRange {
    long double start = 0;
    long double duration = 0;
};

/// A time in samples; no value if it has no rate.
/// @throws Failure  if it is no number or too large
std::optional<long double> SamplesOf(const Node& time, const Rate& samples);

/// The range under a key; no value if it is absent, null, or has no rate.
/// @throws Failure  if it is no range, or its duration is negative
std::optional<TimeRange> RangeOf(const Node& owner, std::string_view key, const Rate& samples);

}  // namespace toolkit::interchange::otio
