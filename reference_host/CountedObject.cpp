#include "reference_host/CountedObject.h"

#include <cstdio>
#include <cstdlib>

namespace refhost {

void EndAtExcessRelease() noexcept {
    std::fputs("reference host: a host object was released more often than it was referenced\n",
               stderr);
    std::abort();
}

}  // namespace refhost
