#include "platform/kelcore/Trace.h"

#include <time.h>

#include <chrono>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <mutex>
#include <new>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace kelcore::trace {
namespace {

bool IsOnByDefault(std::string_view category) {
    return category == kReaderCategory || category == kWriterCategory;
}

/// "[14:03:59.042] category: text", in local time.
std::string StandardErrorLine(std::string_view category, std::string_view text) {
    using std::chrono::system_clock;
    const system_clock::time_point now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    const auto fraction = now - std::chrono::floor<std::chrono::seconds>(now);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    std::ostringstream line;
    line << '[' << std::put_time(&local, "%H:%M:%S") << '.' << std::setw(3) << std::setfill('0')
         << std::chrono::floor<std::chrono::milliseconds>(fraction).count() << "] " << category
         << ": " << text << '\n';
    return std::move(line).str();
}

class State {
public:
    /// Never destroyed: a plug-in may trace during process exit. Static storage: the first line may
    /// report that memory has run out.
    static State& Instance() noexcept {
        alignas(State) static std::byte room[sizeof(State)];
        static State& state = *new (room) State;
        return state;
    }

    bool IsEnabled(std::string_view category) {
        const std::lock_guard lock(mutex_);
        return IsOn(category);
    }

    void SetEnabled(std::string_view category, bool enabled) {
        const std::lock_guard lock(mutex_);
        if (enabled != IsOnByDefault(category)) {
            switched_.emplace(category);
        } else if (const auto found = switched_.find(category); found != switched_.end()) {
            switched_.erase(found);
        }
    }

    Output SetOutput(Output output) {
        auto shared = output ? std::make_shared<const Output>(std::move(output)) : nullptr;
        const std::lock_guard lock(mutex_);
        Output former = output_ ? *output_ : Output();  // before the change: a copy may throw
        output_.swap(shared);
        return former;
    }

    void Write(std::string_view category, std::string_view text) {
        // Runs the output without the lock, so that the output may trace and switch categories.
        std::shared_ptr<const Output> output;
        {
            const std::lock_guard lock(mutex_);
            if (!IsOn(category)) {
                return;
            }
            output = output_;
        }
        if (output) {
            (*output)(category, text);
        } else {
            // One write, so that lines of several threads do not mix.
            std::cerr << StandardErrorLine(category, text);
        }
    }

private:
    bool IsOn(std::string_view category) const {
        return switched_.contains(category) != IsOnByDefault(category);
    }

    std::mutex mutex_;
    // The categories that differ from their default, so that the defaults need no memory.
    std::set<std::string, std::less<>> switched_;
    std::shared_ptr<const Output> output_;
};

}  // namespace

bool IsEnabled(std::string_view category) {
    return State::Instance().IsEnabled(category);
}

void SetEnabled(std::string_view category, bool enabled) {
    State::Instance().SetEnabled(category, enabled);
}

void Write(std::string_view category, std::string_view text) noexcept {
    try {
        State::Instance().Write(category, text);
    } catch (...) {
        // Drop the line.
    }
}

Output SetOutput(Output output) {
    return State::Instance().SetOutput(std::move(output));
}

}  // namespace kelcore::trace
