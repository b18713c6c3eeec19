#pragma once

#include <cstdint>

#include "host/Session.h"

namespace bench {

/// What the plug-in asked of the host that does nothing.
struct NullHostTally {
    std::uint64_t calls = 0;      ///< of all operations but the counting of references
    std::int64_t references = 0;  ///< taken and not given back
    std::uint64_t messages = 0;   ///< of the parser, to the log target
};

/// A session that counts the calls of a read and does nothing else. It has whatever it is asked
/// for: of each interface one object, the private ones for those that have them, which lives as
/// long as the program. One read at a time.
tses::IEditSession& NullHost();

/// The tally since the last time, which then begins anew.
NullHostTally TakeNullHostTally();

}  // namespace bench
