#pragma once

#include <functional>
#include <string>
#include <vector>

#include <orvo/Model.h>
#include "host/Session.h"
#include "host/SessionInterface.h"
#include "reference_host/Plugin.h"
#include "reference_host/Progress.h"
#include "reference_host/Ref.h"

/// Session files through a plug-in, as values. Only one read or write at a time in a process,
/// because each collects the trace while it runs.
namespace refhost {

/// Enables the features that the application enables. Call it before making the plug-in, which asks
/// for them only once.
void UseFeatureDefaults();

struct ReadOptions {
    /// Without a log target only `traced` says why a read failed, and reading goes on after errors
    /// that the parser can recover from.
    bool logTarget = true;
    /// Puts an object between the plug-in and the session: gets the session and returns what the
    /// plug-in is to see. Empty: the session itself.
    std::function<Ref<tses::IEditSession>(tses::IEditSession& session)> wrap{};
    /// Called for each report of progress.
    ProgressListener progress{};
    /// Called for each part of the session that the plug-in begins. What it throws ends the read.
    PartListener partProgress{};
};

struct ReadResult {
    tses::SessionResult result = tses::SessionResult::Ok;
    /// What was read. After a failure, what was read until then; a host discards that.
    orvo::Session session{};
    /// What the parser reported, or why it could not open the file: one line each, without line
    /// ends.
    std::vector<std::u16string> messages{};
    /// What the plug-in traced about a failure (UTF-8), with or without a log target. If the
    /// messages say what is malformed, this says only that something was thrown.
    std::vector<std::string> traced{};
};

/// Reads a session file into a new session. Diverts the output of kelcore::trace while it runs and
/// restores it afterwards.
ReadResult ReadSession(Plugin& plugin, const std::u16string& path, const ReadOptions& options = {});

struct WriteOptions {
    /// As in `ReadOptions`.
    std::function<Ref<tses::IQuerySession>(tses::IQuerySession& session)> wrap{};
    ProgressListener progress{};
    /// Called for each audio track that the plug-in asks for during a write.
    TrackListener trackProgress{};
};

struct WriteResult {
    tses::SessionResult result = tses::SessionResult::Ok;
    /// Why the file could not be saved, in words for people (UTF-8), if the plug-in said why.
    std::vector<std::string> messages{};
};

/// Writes a session to a file. The plug-in holds nothing of it afterwards. Diverts the trace like a
/// read, to collect the messages.
WriteResult WriteSession(Plugin& plugin, const std::u16string& path, const orvo::Session& session,
                         const WriteOptions& options = {});

}  // namespace refhost
