#pragma once

#include <orvo/Model.h>
#include "bench/AnswerTape.h"
#include "host/Session.h"
#include "reference_host/Plugin.h"

namespace bench {

/// Writes the session to the file and records what the reference host answers the plug-in.
/// @throws std::runtime_error if the session cannot be written
AnswerTape RecordAnswers(refhost::Plugin& plugin, const std::u16string& path,
                         const orvo::Session& session);

/// A session that answers each call with the next answer of a tape: a host that costs next to
/// nothing. It has one object of each interface, which lives as long as the program. The plug-in
/// must make the same calls as when the tape was recorded, which it does for the same file. The
/// recorded tracks must have had their private interface.
///
/// Winds the tape back to its start. The tape must outlive the write. One write at a time.
tses::IQuerySession& StaticHost(const AnswerTape& recorded);

/// Whether the plug-in has taken every answer of the tape. If not, it made other calls.
bool StaticHostIsAtEnd();

}  // namespace bench
