#include "toolkit/interchange/otio/Objects.h"

#include <fmt/format.h>

#include "session/json/Encode.h"
#include "toolkit/interchange/otio/Metadata.h"

namespace toolkit::interchange::otio {

Objects::Objects(JsonWriter& out, const Rate& rate)
    : out_(out), rate_(orvo::json::Encoded(rate.Value(), {})) {}

void Objects::Begin(std::string_view schema) {
    out_.BeginObject();
    out_.Key("OTIO_SCHEMA");
    out_.Quoted(schema);
}

void Objects::NamedWithoutMetadata(std::string_view name) {
    NoMetadata();
    Name(name);
}

void Objects::NoMetadata() {
    out_.Key("metadata");
    out_.Plain("{}");
}

void Objects::Name(std::string_view name) {
    Text("name", name);
}

void Objects::BeginOwn() {
    out_.Key("metadata");
    out_.BeginObject();
    out_.Key(kOwnKey);
    out_.BeginObject();
}

void Objects::EndOwn() {
    out_.EndObject();
    out_.EndObject();
}

void Objects::Null(std::string_view key) {
    out_.Key(key);
    out_.Plain("null");
}

void Objects::EmptyList(std::string_view key) {
    out_.Key(key);
    out_.Plain("[]");
}

void Objects::Flag(std::string_view key, bool value) {
    out_.Key(key);
    orvo::json::Encode(out_, value);
}

void Objects::Text(std::string_view key, std::string_view value) {
    out_.Key(key);
    out_.Text(value);
}

void Objects::Number(std::string_view key, double value) {
    out_.Key(key);
    orvo::json::Encode(out_, value);
}

void Objects::Integer(std::string_view key, std::int64_t value) {
    out_.Key(key);
    orvo::json::Encode(out_, value);
}

void Objects::TimeAt(std::int64_t count, std::string_view rate) {
    Begin("RationalTime.1");
    out_.Key("rate");
    out_.Plain(rate);
    out_.Key("value");
    orvo::json::Encode(out_, count);
    out_.Plain(".0");  // a real number, as all programs expect it
    End();
}

void Objects::Time(std::string_view key, std::int64_t count) {
    out_.Key(key);
    TimeAt(count, rate_);
}

void Objects::Range(std::string_view key, std::int64_t start, std::int64_t duration) {
    RangeAt(key, start, duration, rate_);
}

void Objects::Range(std::string_view key, std::int64_t start, std::int64_t duration,
                    std::uint32_t rate) {
    RangeAt(key, start, duration, fmt::format("{}.0", rate));
}

void Objects::RangeAt(std::string_view key, std::int64_t start, std::int64_t duration,
                      std::string_view rate) {
    out_.Key(key);
    Begin("TimeRange.1");
    out_.Key("duration");
    TimeAt(duration, rate);
    out_.Key("start_time");
    TimeAt(start, rate);
    End();
}

void Objects::Gap(std::int64_t duration) {
    Begin("Gap.1");
    NamedWithoutMetadata("");
    Range("source_range", 0, duration);
    EmptyList("effects");
    EmptyList("markers");
    Flag("enabled", true);
    End();
}

void Objects::Transition(std::int64_t in, std::int64_t out) {
    Begin("Transition.1");
    NamedWithoutMetadata("");
    Text("transition_type", "SMPTE_Dissolve");
    Time("in_offset", in);
    Time("out_offset", out);
    End();
}

void Objects::TimeWarp(double scalar) {
    Begin("LinearTimeWarp.1");
    NamedWithoutMetadata("");
    Text("effect_name", "LinearTimeWarp");
    Number("time_scalar", scalar);
    End();
}

void Objects::Item() {
    out_.Item();
    out_.Plain("\n");
}

}  // namespace toolkit::interchange::otio
