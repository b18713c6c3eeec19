#include "platform/kelcore/Trace.h"

#include <spdlog/details/log_msg.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace kelcore::trace {
namespace {

class State {
public:
    /// Never destroyed: a plug-in may trace while the process ends.
    static State& Instance() {
        static State& state = *new State;
        return state;
    }

    bool IsEnabled(std::string_view category) {
        const std::lock_guard lock(mutex_);
        return enabled_.contains(category);
    }

    void SetEnabled(std::string_view category, bool enabled) {
        const std::lock_guard lock(mutex_);
        if (enabled) {
            enabled_.emplace(category);
        } else if (const auto found = enabled_.find(category); found != enabled_.end()) {
            enabled_.erase(found);
        }
    }

    void SetOutput(Output output) {
        auto shared = output ? std::make_shared<const Output>(std::move(output)) : nullptr;
        const std::lock_guard lock(mutex_);
        output_.swap(shared);
    }

    void Write(std::string_view category, std::string_view text) {
        // The output runs without the lock, so that it may itself trace or switch categories.
        std::shared_ptr<const Output> output;
        {
            const std::lock_guard lock(mutex_);
            if (!enabled_.contains(category)) {
                return;
            }
            output = output_;
        }
        if (output) {
            (*output)(category, text);
        } else {
            standardError_.log({spdlog::string_view_t(category.data(), category.size()),
                                spdlog::level::debug,
                                spdlog::string_view_t(text.data(), text.size())});
        }
    }

private:
    State() { standardError_.set_pattern("[%H:%M:%S.%e] %n: %v"); }

    std::mutex mutex_;
    std::set<std::string, std::less<>> enabled_;
    std::shared_ptr<const Output> output_;
    spdlog::sinks::stderr_sink_mt standardError_;
};

}  // namespace

bool IsEnabled(std::string_view category) {
    return State::Instance().IsEnabled(category);
}

void SetEnabled(std::string_view category, bool enabled) {
    State::Instance().SetEnabled(category, enabled);
}

void Write(std::string_view category, std::string_view text) {
    State::Instance().Write(category, text);
}

void SetOutput(Output output) {
    State::Instance().SetOutput(std::move(output));
}

}  // namespace kelcore::trace
