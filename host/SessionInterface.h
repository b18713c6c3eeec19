#pragma once

#include <cstdint>

/// The one function that the plug-in exports. A host loads the library, looks
/// `kSessionInterfaceName` up and drives everything through it:
///
///     Initialize once; then, as often as needed, SetFilePath followed by ReadSession or
///     WriteSession; Terminate at the end, before the library is unloaded.
///
/// The host calls from one thread at a time. Arguments are the host's objects (see the selectors);
/// the plug-in holds references to them only during the call, except for the context of a write
/// (`IQuerySession::GetContext`), which it holds until the next call with any selector.
///
/// Host and plug-in share `libkelplatform.so`, which lies beside the plug-in: the switches of
/// features, and the trace that says why a read or a save failed (docs/host-interfaces.md).
///
/// Nothing is ever thrown across the call: what the host's own operations throw is caught inside
/// and ends the request with its failure code. Only a throw out of `IHostObject::Release` ends the
/// process.
namespace tses {

/// What is asked of the plug-in.
enum class SessionSelector : std::int32_t {
    /// Argument: `IPlugInRegistrar`. Registers the plug-in and its format, and makes it ready.
    /// Reads
    /// the feature "Tembra.InstrumentTracks", only here; it is off until the application calls
    /// `kelappsupport::SetFeatureEnabled`, and while it is off reads skip instrument tracks.
    Initialize = 0,
    /// Argument: ignored. Does nothing; may come at any time.
    Reserved = 1,
    /// Argument: ignored. Frees what Initialize made. Once more, it does nothing; a new Initialize
    /// may follow.
    Terminate = 2,
    /// Argument: `IHostFileRef`. Keeps the path for the reads and writes that follow.
    SetFilePath = 3,
    /// Argument: `IEditSession`. Reads the file into it. A read that fails has made a part of its
    /// calls, so the host discards that session. One that ended inside an element that the format
    /// does not know, because it failed there or because the document ends so (an `orvo` inside the
    /// `orvo`, with no element behind it), leaves the next read skipping until an element ends as
    /// deep in that document: a host does Terminate and Initialize after a read that failed, or
    /// before every read.
    ReadSession = 4,
    /// Argument: `IQuerySession`. Writes it to the file. A write that fails leaves an existing file
    /// as it was, but for the two rare cases that the disk or the XML library lies: the new file
    /// stands whole and only its folder could not be put on the disk, or the document came out
    /// empty and so does the file.
    WriteSession = 5,
};

/// What the call returns.
enum class SessionResult : std::int32_t {
    /// Done. Also a read or write that does nothing and reports no progress: after an Initialize
    /// that found no memory for the plug-in's own objects, whose own result is Ok too; and, unless
    /// Terminate was called, before the first Initialize and after one that failed. An Initialize
    /// that fails because the host throws leaves a plug-in that is ready as it was.
    Ok = 0,
    /// The selector is none of the six, negative ones included.
    UnknownSelector = -2,
    /// The selector is not implemented. This plug-in implements all.
    NotImplemented = -3,
    /// The file was not read: no path, no such file, malformed, not a session, or refused by the
    /// host. The trace says why; of a malformed file, the session's log target if it has one. Also
    /// every read after Terminate until an Initialize succeeds, and a host that throws out of
    /// Initialize or SetFilePath, which leaves no path.
    ReadFailed = -4,
    /// The argument is null where one is needed (all but Reserved and Terminate).
    NullArgument = -6,
    /// The session was not written: no path, the file cannot be written, the host has no metronome
    /// or threw, or a count, a size or a text of it goes beyond what a file holds
    /// (docs/host-interfaces.md lists where). The trace says why. Also every write after Terminate
    /// until an Initialize succeeds.
    WriteFailed = -10,
};

/// The type of the exported function.
using SessionInterfaceFunction = std::int32_t(std::int32_t selector, void* argument);

/// The name that the function is exported under.
inline constexpr char kSessionInterfaceName[] = "SessionInterface";

}  // namespace tses

extern "C" std::int32_t SessionInterface(std::int32_t selector, void* argument);
