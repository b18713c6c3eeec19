#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A program that links this controls its own file system calls: they are counted, and one of them,
/// or all from one on, can be made to go wrong.
namespace test {

enum class Wrong {
    Nothing,
    Fails,            ///< does nothing (but closes a descriptor, as the system does)
    FailsAfterwards,  ///< does its work first, as may happen over a network
    DoesHalf,         ///< writes only a part
    DoesNothing,      ///< writes nothing and reports success
    DiesBefore,       ///< kills the program before the call
    DiesAfter,        ///< kills the program after the call
};

enum class Extent {
    Once,      ///< only this call
    SameName,  ///< this and all later calls of the same function
    All,       ///< this and all later calls
};

struct Fault {
    Wrong wrong = Wrong::Nothing;
    int error = 0;  ///< the error of a failing call
    Extent extent = Extent::Once;
    std::size_t atCall = 0;  ///< counting all calls from zero
};

/// Starts to count calls and lets them go wrong as specified.
void BeginFaults(const Fault& next);

/// Returns the names of the calls since then, in order.
std::vector<std::string> EndFaults();

}  // namespace test
