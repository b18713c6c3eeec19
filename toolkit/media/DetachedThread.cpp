#include "toolkit/media/DetachedThread.h"

#include <csignal>
#include <system_error>
#include <thread>

namespace toolkit {
namespace {

/// Blocks all signals in this thread, and in those that it starts meanwhile.
class WithoutSignals {
public:
    WithoutSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &before_);
    }
    ~WithoutSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    WithoutSignals(const WithoutSignals&) = delete;
    WithoutSignals& operator=(const WithoutSignals&) = delete;

private:
    sigset_t before_{};
};

bool StartThread(const std::function<void()>& work) {
    const WithoutSignals inherited;
    try {
        std::thread(work).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

}  // namespace

void RunDetached(const std::function<void()>& work) {
    if (!StartThread(work)) {
        work();
    }
}

}  // namespace toolkit
