#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Message.h>
#include <orvo/Model.h>

/// Sessions and their files. The work is done by the plug-in `OrvoNative.so`, which is loaded when
/// it is first needed, once in a process: from the file that the environment variable ORVO_PLUGIN
/// names, else from the library's own folder, else from `../lib` beside it.
///
/// Every function here may be called from any thread. Reads and writes wait for each other, because
/// the plug-in takes one call at a time. They throw only std::bad_alloc.
///
/// The first read or write turns on the application's features that the plug-in looks at, for the
/// whole process. This concerns a program that is also a host of the plug-in.
///
/// The plug-in starts and stops Xerces-C, which counts its users without a lock. A program that
/// uses Xerces-C itself must not start or stop it while a function here runs.
namespace orvo {

/// Called during a read or a write, in the thread of the call, with the share that is done. The
/// share never decreases. Return false to cancel. The share stays below 1 until the work has
/// succeeded: then a last call reports 1, and its answer has no effect. The function must not
/// throw, and it must not read or write a session.
using ProgressFunction = std::function<bool(double share)>;

struct ReadOptions {
    /// Called for each file, track, clip, effect and send, so that a read soon ends when it is
    /// cancelled. The share grows a few times only, when a whole list has been read.
    ProgressFunction progress{};
};

struct ReadResult {
    bool ok = false;
    bool cancelled = false;           ///< `progress` ended the read
    Session session{};                ///< what was read; a new session after a failure
    std::vector<Message> messages{};  ///< why nothing was read; those with a place come first

    explicit operator bool() const { return ok; }
};

struct WriteOptions {
    /// Called for each audio track, up to one half; the other half is one step.
    ProgressFunction progress{};
};

struct WriteResult {
    bool ok = false;
    bool cancelled = false;  ///< `progress` ended the write

    /// Why nothing was saved. After success, a warning if characters were replaced because XML
    /// cannot carry them. Other losses are not reported here.
    std::vector<Message> messages{};

    explicit operator bool() const { return ok; }
};

/// Reads a session file. A relative path counts from the working directory. Paths of media that
/// the file stores relative to itself become full paths, which need not exist. Unknown elements,
/// and values that the format does not allow, are ignored without a message.
ORVO_API ReadResult ReadSession(const std::filesystem::path& file, const ReadOptions& options = {});

/// Saves a session. The file is replaced only once the new one is whole; after a failure, or if the
/// write is cancelled, it is what it was. Its folder must exist. What a session file has no place
/// for is left out: read the file back and call `FindDifferences` to see what. Fails if a file or a
/// track has the id `kNoId`, or two in one list have the same id. Paths of media are stored as they
/// are, so make them full paths first.
ORVO_API WriteResult WriteSession(const Session& session, const std::filesystem::path& file,
                                  const WriteOptions& options = {});

/// Loads the plug-in if it is not loaded.
/// @return why sessions can be neither read nor written; nothing if they can
ORVO_API std::optional<Message> CheckPlugin();

}  // namespace orvo
