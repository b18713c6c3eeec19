#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

/// Pieces of OpenTimelineIO as other programs write it.
namespace test::otio {

inline std::string Time(double value, double rate = 48000) {
    return fmt::format(R"({{"OTIO_SCHEMA":"RationalTime.1","rate":{},"value":{}}})", rate, value);
}

inline std::string Range(double start, double duration, double rate = 48000) {
    return fmt::format(R"({{"OTIO_SCHEMA":"TimeRange.1","start_time":{},"duration":{}}})",
                       Time(start, rate), Time(duration, rate));
}

/// @param rest  further members, each with a comma in front
inline std::string Object(std::string_view schema, std::string_view rest) {
    return fmt::format(R"({{"OTIO_SCHEMA":"{}"{}}})", schema, rest);
}

inline std::string Gap(double duration, double rate = 48000) {
    return Object("Gap.1", R"(,"source_range":)" + Range(0, duration, rate));
}

inline std::string Clip(std::string_view name, double start, double duration, double rate = 48000,
                        std::string_view rest = "") {
    return Object("Clip.2", fmt::format(R"(,"name":"{}","source_range":{}{})", name,
                                        Range(start, duration, rate), rest));
}

inline std::string Dissolve(double in, double out, double rate = 48000) {
    return Object("Transition.1", fmt::format(R"(,"in_offset":{},"out_offset":{})", Time(in, rate),
                                              Time(out, rate)));
}

/// Media at a URL.
inline std::string Media(std::string_view url, std::string_view availableRange = "null") {
    return fmt::format(
        R"(,"media_references":{{"DEFAULT_MEDIA":{{"OTIO_SCHEMA":"ExternalReference.1",)"
        R"("available_range":{},"target_url":"{}"}}}},"active_media_reference_key":"DEFAULT_MEDIA")",
        availableRange, url);
}

inline std::string Track(std::string_view children, std::string_view rest = "") {
    return Object("Track.1",
                  fmt::format(R"(,"name":"T","kind":"Audio","children":[{}]{})", children, rest));
}

inline std::string Stack(std::string_view children, std::string_view rest = "") {
    return Object("Stack.1", fmt::format(R"(,"children":[{}]{})", children, rest));
}

inline std::string Timeline(std::string_view tracks) {
    return Object("Timeline.1", R"(,"name":"x","tracks":)" + Stack(tracks));
}

}  // namespace test::otio
