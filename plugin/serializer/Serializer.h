#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Reads and writes session files, any number of them, one at a time. Lives from the plug-in's
/// initialisation to its termination.
class Serializer {
public:
    /// Both apply to every write; see `SessionXMLWriter`.
    explicit Serializer(WriterFault fault = {}, DocumentMaker makeDocument = ChosenDocumentMaker());
    virtual ~Serializer();
    Serializer(const Serializer&) = delete;
    Serializer& operator=(const Serializer&) = delete;

    /// Reads the file at `path` into `session`. Returns whether the file is a session and was read
    /// to its end. An empty path fails. The trace and the log target of `session` get the reason
    /// why a file cannot be read. An exception of the host during the parse is traced and fails the
    /// read; an exception of its first `SetProgress` passes through.
    bool Read(const std::u16string& path, HostReference<IEditSession> session);

    /// Writes `session` to the file at `path`. The file stays as it was unless everything succeeds
    /// (but see `SessionXMLWriter::Save`). Exceptions of the host pass through.
    bool Write(const std::u16string& path, HostReference<IQuerySession> session);

    /// What makes the documents of the application's saves: streamed ones if it has turned on the
    /// feature `kStreamedSave`, otherwise those of the XML library.
    static DocumentMaker ChosenDocumentMaker();

    /// Starts and stops the XML library for all serializers. A second start has no effect. Between
    /// a stop and the next start every read and write fails. No serializer may be at work.
    static void StartXmlLibrary();
    static void StopXmlLibrary();

    /// Traces the message of the exception that is being handled. Call it only in a catch clause.
    static void TraceFailure(std::string_view category) noexcept;

    class Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace tses
