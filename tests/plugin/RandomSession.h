#pragma once

#include <orvo/Model.h>

namespace test {

/// A session with any value in any field, drawn from within a property of rapidcheck. Its lists are
/// short, and every id by which a host finds a thing is there once and is not the one that means
/// none.
orvo::Session DrawSession();

}  // namespace test
