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

/// Session files through a plug-in, as values. One read or write at a time in a process: each
/// collects what is traced while it runs.
namespace refhost {

/// Switches on what the application switches on. Call before the plug-in is made: it asks once.
void UseFeatureDefaults();

struct ReadOptions {
    /// Without a log target only `traced` says why a read failed, and reading goes on after errors
    /// that the parser can recover from.
    bool logTarget = true;
    /// Puts an object between plug-in and session: it is given the session and returns what the
    /// plug-in gets to see. Empty: the session itself.
    std::function<Ref<tses::IEditSession>(tses::IEditSession& session)> wrap{};
    /// Called for each report of progress.
    ProgressListener progress{};
};

struct ReadResult {
    tses::SessionResult result = tses::SessionResult::Ok;
    /// What was read. After a failure: what was read until then, which a host discards.
    orvo::Session session{};
    /// What the parser said, or why it could not open the file, a line each, without line ends.
    std::vector<std::u16string> messages{};
    /// What the plug-in traced of a failure (UTF-8), also without a log target. Where the messages
    /// say what is malformed, this says only that something was thrown.
    std::vector<std::string> traced{};
};

/// Reads a session file into a new session. While it runs, the output of kelcore::trace is diverted
/// to collect what is traced; afterwards it is what it was.
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

/// Writes a session to a file. The plug-in holds nothing of it afterwards. The trace is diverted as
/// in a read, to collect the messages.
WriteResult WriteSession(Plugin& plugin, const std::u16string& path, const orvo::Session& session,
                         const WriteOptions& options = {});

}  // namespace refhost
