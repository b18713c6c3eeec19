#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A program that is linked with this has the calls of the system that concern files under its
/// control: they are counted, and one of them, or all from one on, can be made to go wrong.
namespace test {

enum class Wrong {
    Nothing,
    Fails,            ///< without doing anything (but a descriptor is closed, as the system does)
    FailsAfterwards,  ///< having done what it should, as may happen over a network
    DoesHalf,         ///< writes a part of what it should
    DoesNothing,      ///< writes nothing and calls that a success
    DiesBefore,       ///< the program is killed before it
    DiesAfter,        ///< the program is killed when it is done
};

enum class Extent {
    Once,      ///< this call alone
    SameName,  ///< and all later ones of the same function
    All,       ///< and all later ones of any function
};

struct Fault {
    Wrong wrong = Wrong::Nothing;
    int error = 0;  ///< what a call that fails gives as reason
    Extent extent = Extent::Once;
    std::size_t atCall = 0;  ///< counted from zero, among all calls
};

/// From here on calls are counted, and go wrong as told.
void BeginFaults(const Fault& next);

/// @returns the names of the calls since, in their order.
std::vector<std::string> EndFaults();

}  // namespace test
