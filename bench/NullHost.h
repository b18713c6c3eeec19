#pragma once

#include "host/Session.h"

namespace bench {

/// A session that takes a read and does nothing. It has whatever it is asked for: one object of
/// each interface, the private ones included, which lives as long as the program. One read at a
/// time.
tses::IEditSession& NullHost();

}  // namespace bench
