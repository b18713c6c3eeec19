#pragma once

#include <cstdint>
#include <string>

#include <orvo/Diff.h>
#include <orvo/Session.h>

namespace orvo::diff {

/// Times of one session as texts.
class Times {
public:
    Times(const Session& session, ChangeTimes form);

    std::string Position(std::int64_t position) const;

    /// Bars and beats count from 1, so a length is a time there. A length that would round to 0 is
    /// shown in samples.
    std::string Length(std::int64_t length) const;

    /// The way from one position to another, with its sign.
    std::string Offset(std::int64_t from, std::int64_t to) const;

private:
    Session form_;  // only what says how to show times
    ChangeTimes times_;
};

/// The length of the way between two positions, as far as 64 bits reach.
std::int64_t DistanceBetween(std::int64_t from, std::int64_t to);

/// The sum, as far as 64 bits reach.
std::int64_t Sum(std::int64_t position, std::int64_t length);

}  // namespace orvo::diff
