#pragma once

#include <cstdint>

/// The one function that the plug-in exports. A host loads the library, looks up
/// `kSessionInterfaceName` and drives everything through that function:
///
///     Initialize once; then, as often as needed, SetFilePath followed by ReadSession or
///     WriteSession; Terminate at the end, before the library is unloaded.
///
/// The host calls from one thread at a time. Arguments are the host's objects (see the selectors);
/// the plug-in holds references to them only during the call, except for the context of a write
/// (`IQuerySession::GetContext`), which it holds until the next call with any selector.
///
/// Host and plug-in share `libkelplatform.so`, which lies beside the plug-in. It holds the feature
/// switches, and the trace that says why a read or a save failed (docs/host-interfaces.md).
///
/// The function never throws. It catches what the host's operations throw and returns the failure
/// code of the request. Only an exception out of `IHostObject::Release` ends the process.
namespace tses {

/// What the host asks of the plug-in.
enum class SessionSelector : std::int32_t {
    /// Argument: `IPlugInRegistrar`. Registers the plug-in and its format, and makes it ready. Only
    /// this selector looks at the application's features (Features.h).
    Initialize = 0,
    /// Argument: ignored. Does nothing; may come at any time.
    Reserved = 1,
    /// Argument: ignored. Frees what Initialize made. A second Terminate does nothing; a new
    /// Initialize may follow.
    Terminate = 2,
    /// Argument: `IHostFileRef`. Keeps the path for the reads and writes that follow.
    SetFilePath = 3,
    /// Argument: `IEditSession`. Reads the file into it. A failed read has made some of its calls,
    /// so the host discards that session. A host does Terminate and Initialize after a failed read,
    /// or before every read. Without that, a read which ended inside an element that the format
    /// does not know (because it failed there, or because the document ends with an `orvo` inside
    /// the `orvo`) makes the next read skip everything until an element ends at the same depth.
    ReadSession = 4,
    /// Argument: `IQuerySession`. Writes it to the file. A failed write leaves an existing file as
    /// it was, with two rare exceptions: the new file is whole, but its folder could not be flushed
    /// to the disk; or the XML library reported success without a document, and the file is empty.
    WriteSession = 5,
};

/// What the call returns.
enum class SessionResult : std::int32_t {
    /// Done. A read or write also returns Ok if it does nothing and reports no progress. That is so
    /// after an Initialize that found no memory for the plug-in's own objects (and returned Ok as
    /// well) and, unless Terminate was called, before the first Initialize and after a failed one.
    /// If the plug-in is ready, an Initialize that fails because the host throws leaves it ready.
    Ok = 0,
    /// The selector is not one of the six.
    UnknownSelector = -2,
    /// The selector is not implemented. This plug-in implements all.
    NotImplemented = -3,
    /// The file was not read: no path, no such file, malformed, not a session, or refused by the
    /// host. The trace says why; for a malformed file, the session's log target does if there is
    /// one. Every read after Terminate fails like this until an Initialize succeeds. So does
    /// Initialize or SetFilePath if the host throws; SetFilePath then leaves no path.
    ReadFailed = -4,
    /// The argument is null where one is needed (all but Reserved and Terminate).
    NullArgument = -6,
    /// The session was not written: no path, the file cannot be written, the host has no metronome
    /// or threw, or one of its counts, sizes or texts is more than a file can hold
    /// (docs/host-interfaces.md lists them). The trace says why. Every write after Terminate fails
    /// like this until an Initialize succeeds.
    WriteFailed = -10,
};

/// The type of the exported function.
using SessionInterfaceFunction = std::int32_t(std::int32_t selector, void* argument);

/// The name that the function is exported under.
inline constexpr char kSessionInterfaceName[] = "SessionInterface";

}  // namespace tses

extern "C" std::int32_t SessionInterface(std::int32_t selector, void* argument);
