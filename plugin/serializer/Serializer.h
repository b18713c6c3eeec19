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
    explicit Serializer(WriterFault fault = {}, NodeMaker makeNodes = kNodeMaker);
    virtual ~Serializer();
    Serializer(const Serializer&) = delete;
    Serializer& operator=(const Serializer&) = delete;

    /// Reads the file at `path` into `session` and returns whether it is a session that was read to
    /// its end. An empty path reads nothing and fails. Why a file cannot be read goes to the trace
    /// and to the log target of `session`. What the host throws while the document is parsed is
    /// traced and fails the read; what its first report of progress throws passes through.
    bool Read(const std::u16string& path, HostReference<IEditSession> session);

    /// Writes `session` to the file at `path`, which stays as it was unless everything succeeds
    /// (but see `SessionXMLWriter::Save`). What the host throws passes through.
    bool Write(const std::u16string& path, HostReference<IQuerySession> session);

    /// Starts and stops the XML library for all serializers. Starting twice is starting once;
    /// between a stop and the next start every read and write fails. No serializer may be at work.
    static void StartXmlLibrary();
    static void StopXmlLibrary();

    /// Traces the message of the exception that is being handled. Only to be called in a catch
    /// clause.
    static void TraceFailure(std::string_view category) noexcept;

    class Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace tses
