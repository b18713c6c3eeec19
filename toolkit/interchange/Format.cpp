#include "toolkit/interchange/Format.h"

namespace toolkit::interchange {
namespace {

void Report(const orvo::ProgressFunction& progress, double share) {
    if (progress && !progress(share)) {
        throw Cancelled();
    }
}

}  // namespace

void Export::Progress(double share) const {
    Report(options.progress, share);
}

void Import::Progress(double share) const {
    Report(options.progress, share);
}

}  // namespace toolkit::interchange
