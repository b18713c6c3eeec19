#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Model.h>

namespace orvo {

/// One difference between two sessions. All texts are UTF-8.
struct Difference {
    std::string place{};   ///< as a JSON pointer into full JSON: "/audioTracks/0/name"
    std::string before{};  ///< as JSON, shortened to some 60 bytes; "nothing" for what is not there
    std::string after{};   ///< the same

    friend bool operator==(const Difference&, const Difference&) = default;
};

struct Differences {
    std::vector<Difference> list{};  ///< the first ones, in the order of the session's JSON
    std::size_t count = 0;           ///< of all

    friend bool operator==(const Differences&, const Differences&) = default;
};

/// Compares two sessions. A NaN is the same as a NaN. Null entries in lists are ignored. A channel
/// that a clip leaves out below the highest one is fed by the channel of its own number. Items of
/// lists are matched by id if they have one. May run in any number of threads.
/// @param limit  the most differences to list
ORVO_API Differences FindDifferences(const Session& session, const Session& other,
                                     std::size_t limit);

/// Prints "/audioTracks/0/name: \"a\" became \"b\"".
ORVO_API std::ostream& operator<<(std::ostream& out, const Difference& difference);

}  // namespace orvo
