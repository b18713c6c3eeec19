#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "session/json/JsonWriter.h"
#include "toolkit/interchange/otio/Rate.h"

namespace toolkit::interchange::otio {

/// Writes the objects of OpenTimelineIO, with all their keys.
class Objects {
public:
    /// @param rate  of all times
    Objects(orvo::json::JsonWriter& out, const Rate& rate);

    void Begin(std::string_view schema);
    void End() { out_.EndObject(); }

    /// The name, with an empty object of metadata.
    void NamedWithoutMetadata(std::string_view name);
    void Name(std::string_view name);
    void NoMetadata();

    /// Begins `metadata.orvo`, to which the caller adds keys, and ends it.
    void BeginOwn();
    void EndOwn();

    void Null(std::string_view key);
    void EmptyList(std::string_view key);
    void Flag(std::string_view key, bool value);
    void Text(std::string_view key, std::string_view value);
    void Number(std::string_view key, double value);
    void Integer(std::string_view key, std::int64_t value);
    void Time(std::string_view key, std::int64_t count);
    void Range(std::string_view key, std::int64_t start, std::int64_t duration);
    /// Of another rate than that of the others.
    void Range(std::string_view key, std::int64_t start, std::int64_t duration, std::uint32_t rate);

    // Whole objects

    void Gap(std::int64_t duration);
    void Transition(std::int64_t in, std::int64_t out);
    void TimeWarp(double scalar);

    /// Begins an element of the list that is open, on a line of its own.
    void Item();

private:
    void RangeAt(std::string_view key, std::int64_t start, std::int64_t duration,
                 std::string_view rate);
    void TimeAt(std::int64_t count, std::string_view rate);

    orvo::json::JsonWriter& out_;
    std::string rate_;
};

}  // namespace toolkit::interchange::otio
