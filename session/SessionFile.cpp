#include <orvo/Session.h>

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "reference_host/LoggedMessage.h"
#include "reference_host/Plugin.h"
#include "reference_host/Sessions.h"
#include "session/ListLimits.h"
#include "session/OwnIds.h"
#include "session/PluginTurn.h"

namespace orvo {
namespace {

// The plug-in

/// The plug-in of the process, loaded when it is first needed. Its library's own objects are older
/// than this one, so that it is terminated before the end of the process destroys them.
class SharedPlugin {
public:
    /// @throws refhost::PluginError
    static SharedPlugin& Instance() {
        static SharedPlugin instance;
        return instance;
    }

    /// Calls `request` with the plug-in, without anything that an earlier request left in it.
    /// @throws refhost::PluginError
    template <class Request>
    auto Do(const Request& request) {
        const auto turn = WaitForTurn();
        if (wasUsed_) {
            plugin_->Restart();
        }
        wasUsed_ = true;
        return request(*plugin_);
    }

private:
    SharedPlugin() {
        refhost::UseFeatureDefaults();
        plugin_.emplace();
    }

    std::optional<refhost::Plugin> plugin_;
    bool wasUsed_ = false;
};

Message MessageOf(const refhost::PluginError& error) {
    return {.what = error.Problem(), .advice = error.Advice()};
}

// Progress

/// Ends a request when it is thrown out of a host's operation: the plug-in then fails.
struct Cancelled {};

/// Reports progress to the caller and remembers whether it cancelled.
class Watch {
public:
    explicit Watch(const ProgressFunction& progress) : progress_(progress) {}

    void Report(double share) {
        share_ = std::max(share_, std::min(share, kMostBeforeEnd));
        if (progress_ && !progress_(share_)) {
            cancelled_ = true;
            throw Cancelled();
        }
    }

    /// Asks the caller between two reports whether to cancel.
    void Ask() { Report(share_); }

    /// Reports the end of a success. The answer no longer cancels.
    void Finish() const {
        if (progress_) {
            progress_(1);
        }
    }

    bool IsCancelled() const { return cancelled_; }

private:
    /// The plug-in's own last step is not the end of the request, which may still fail after it.
    static constexpr double kMostBeforeEnd = 0.99;

    const ProgressFunction& progress_;
    double share_ = 0;
    bool cancelled_ = false;
};

double Share(std::uint32_t done, std::uint32_t total) {
    return total == 0 ? 0 : static_cast<double>(done) / total;
}

// Paths

/// Resolves the links before "..", as the system does. The plug-in goes by the text alone.
std::filesystem::path WithoutStepsBack(const std::filesystem::path& path) {
    if (std::ranges::find(path, "..") == path.end()) {
        return path;
    }
    std::error_code error;
    const std::filesystem::path folder =
        std::filesystem::weakly_canonical(path.parent_path(), error);
    return error ? path : folder / path.filename();
}

/// As the plug-in takes it. A full path is used as it is.
std::u16string PluginPathOf(const std::filesystem::path& file) {
    return file.is_absolute()
               ? kelcore::PathFromBytes(file.string())
               : kelcore::File(kelcore::PathFromBytes(WithoutStepsBack(file).string())).FullPath();
}

// Messages

bool HasPlace(const Message& message) {
    return message.line != 0;
}

Message MessageOf(const std::filesystem::path& file, const refhost::LoggedMessage& logged) {
    return {.file = file.string(),
            .line = logged.line,
            .column = logged.column,
            .what = logged.text,
            .advice = logged.advice};
}

std::vector<Message> MessagesOf(const std::filesystem::path& file, const std::u16string& path,
                                const refhost::ReadResult& read) {
    std::vector<Message> messages;
    for (const std::u16string& logged : read.messages) {
        messages.push_back(MessageOf(file, refhost::ParseLoggedMessage(logged, path)));
    }
    // The plug-in begins with what it says of every failure.
    std::stable_partition(messages.begin(), messages.end(), HasPlace);
    if (messages.empty()) {
        for (const std::string& line : read.traced) {
            messages.push_back({.file = file.string(), .what = line});
        }
    }
    if (messages.empty()) {
        messages.push_back({.file = file.string(),
                            .what = refhost::kRefusedWithoutReason,
                            .advice = refhost::kTryAgain});
    }
    return messages;
}

std::vector<Message> MessagesOf(const std::filesystem::path& file,
                                const refhost::WriteResult& written) {
    const bool ok = written.result == tses::SessionResult::Ok;
    std::vector<Message> messages;
    for (const std::string& line : written.messages) {
        messages.push_back({.severity = ok ? Severity::Warning : Severity::Error,
                            .file = file.string(),
                            .what = line});
    }
    if (!ok && messages.empty()) {
        messages.push_back({.file = file.string(), .what = "the plug-in refused to write it"});
    }
    return messages;
}

std::vector<Message> CancelledMessage(const std::filesystem::path& file) {
    return {{.file = file.string(), .what = "was cancelled"}};
}

}  // namespace

std::unique_lock<std::mutex> WaitForTurn() {
    static std::mutex turn;
    return std::unique_lock(turn);
}

ReadResult ReadSession(const std::filesystem::path& file, const ReadOptions& options) {
    ReadResult result;
    try {
        Watch watch(options.progress);
        const std::u16string path = PluginPathOf(file);
        const refhost::ReadOptions hostOptions = {
            .progress =
                [&watch](const refhost::Progress& progress) {
                    watch.Report(Share(progress.done, progress.total));
                },
            .partProgress = [&watch] { watch.Ask(); }};
        refhost::ReadResult read = SharedPlugin::Instance().Do([&](refhost::Plugin& plugin) {
            return refhost::ReadSession(plugin, path, hostOptions);
        });
        result.ok = read.result == tses::SessionResult::Ok;
        if (result.ok) {
            result.session = std::move(read.session);
            watch.Finish();
        } else {
            result.cancelled = watch.IsCancelled();
            result.messages =
                result.cancelled ? CancelledMessage(file) : MessagesOf(file, path, read);
        }
    } catch (const refhost::PluginError& error) {
        result.messages.push_back(MessageOf(error));
    }
    return result;
}

WriteResult WriteSession(const Session& session, const std::filesystem::path& file,
                         const WriteOptions& options) {
    WriteResult result;
    if (auto noOwn = FindIdThatIsNoOwn(session)) {
        result.messages.push_back(std::move(*noOwn));
        return result;
    }
    try {
        Watch watch(options.progress);
        // The plug-in asks for all tracks in the first half of the time, and does not say how far
        // it is in the second.
        const refhost::WriteOptions hostOptions = {
            .trackProgress = [&watch](std::uint32_t done, std::uint32_t total) {
                watch.Report(Share(done, total) / 2);
            }};
        const refhost::WriteResult written =
            SharedPlugin::Instance().Do([&](refhost::Plugin& plugin) {
                return refhost::WriteSession(plugin, PluginPathOf(file), session, hostOptions);
            });
        result.ok = written.result == tses::SessionResult::Ok;
        result.cancelled = !result.ok && watch.IsCancelled();
        result.messages = result.cancelled ? CancelledMessage(file) : MessagesOf(file, written);
        if (result.ok) {
            watch.Finish();
        }
        if (!result.ok && !result.cancelled) {
            if (auto beyond = FindListBeyondLimits(session)) {
                result.messages.push_back(std::move(*beyond));
            }
        }
    } catch (const refhost::PluginError& error) {
        result.messages.push_back(MessageOf(error));
    }
    return result;
}

std::optional<Message> CheckPlugin() {
    try {
        SharedPlugin::Instance();
        return std::nullopt;
    } catch (const refhost::PluginError& error) {
        return MessageOf(error);
    }
}

}  // namespace orvo
