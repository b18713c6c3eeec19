#include "reference_host/recorder/Recorder.h"

#include <utility>

#include "reference_host/recorder/Recording.h"

namespace refhost {

Recorder::Recorder(Options options) : recording_(std::make_unique<Recording>(std::move(options))) {}

Recorder::~Recorder() = default;

tses::IEditSession& Recorder::Wrap(tses::IEditSession& session) {
    return *recording_->StandInFor(&session);
}

tses::IQuerySession& Recorder::Wrap(tses::IQuerySession& session) {
    return *recording_->StandInFor(&session);
}

}  // namespace refhost
