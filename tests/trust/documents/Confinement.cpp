#include "tests/trust/documents/Confinement.h"

#include <seccomp.h>

#include <memory>
#include <stdexcept>
#include <type_traits>

namespace test {
namespace {

struct Release {
    void operator()(scmp_filter_ctx filter) const { seccomp_release(filter); }
};

}  // namespace

void ForbidSocketsAndPrograms() {
    const std::unique_ptr<std::remove_pointer_t<scmp_filter_ctx>, Release> filter(
        seccomp_init(SCMP_ACT_ALLOW));
    bool isMade = filter != nullptr;
    for (const int call : {SCMP_SYS(socket), SCMP_SYS(socketpair), SCMP_SYS(connect),
                           SCMP_SYS(execve), SCMP_SYS(execveat)}) {
        isMade = isMade && seccomp_rule_add(filter.get(), SCMP_ACT_KILL_PROCESS, call, 0) == 0;
    }
    if (!isMade || seccomp_load(filter.get()) != 0) {
        throw std::runtime_error("the system does not support filters for system calls");
    }
}

}  // namespace test
