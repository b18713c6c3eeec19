#include "reference_host/LogTarget.h"

#include <utility>

#include "reference_host/HostString.h"

namespace refhost {

LogTarget::LogTarget(Listener listener) : listener_(std::move(listener)) {}

void LogTarget::LogMessage(tses::IHostString* text) {
    messages_.push_back(TextOf(text));
    if (listener_) {
        listener_(messages_.back());
    }
}

}  // namespace refhost
