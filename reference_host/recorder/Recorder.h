#pragma once

#include <memory>

#include "host/Session.h"
#include "reference_host/recorder/CallRecord.h"
#include "reference_host/recorder/FaultPlan.h"

namespace refhost {

class Recording;

/// Stands between plug-in and host. It wraps a session; the session and every object that is
/// reached through it then forward each call to the host's own object and report it.
///
/// One recorder serves one read or write. For as long as the recorder lives, an object has one
/// number and one stand-in. The stand-in holds a reference to the object, so the object's address
/// cannot become another object's. A track or metronome casts to its private interface if the
/// host's own object does. Host strings, the plug-in's and the host's, pass through as they are; so
/// does the context of a write, which may outlive the recorder and is not held by it.
///
/// The recorder must outlive every use that the plug-in makes of the session. That use ends with
/// the call of `SessionInterface`.
class Recorder {
public:
    struct Options {
        CallSink sink;                  ///< may be empty
        Interceptor interceptor;        ///< may be empty: every call is forwarded
        bool recordReferences = false;  ///< whether `AddReference` and `Release` are reported
    };

    explicit Recorder(Options options);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// The session to pass to the plug-in in place of `session`. It belongs to the recorder.
    tses::IEditSession& Wrap(tses::IEditSession& session);
    tses::IQuerySession& Wrap(tses::IQuerySession& session);

private:
    std::unique_ptr<Recording> recording_;
};

}  // namespace refhost
