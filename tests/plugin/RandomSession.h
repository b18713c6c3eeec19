#pragma once

#include <orvo/Model.h>

namespace test {

/// A session with any value in any field, drawn from within a property of rapidcheck. Its lists are
/// short. Every id by which a host finds a thing is unique and not the one that names nothing.
orvo::Session DrawSession();

}  // namespace test
