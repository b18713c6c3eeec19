#pragma once

#include "bench/AnswerTape.h"
#include "host/Session.h"
#include "reference_host/Plugin.h"
#include "reference_host/model/Session.h"

namespace bench {

/// What the plug-in asks while it writes the session to the file, and the answers of the reference
/// host.
/// @throws std::runtime_error if the session cannot be written
AnswerTape RecordAnswers(refhost::Plugin& plugin, const std::u16string& path,
                         const refhost::model::Session& session);

/// A session that gives the answers of a tape, one after the other, whatever it is asked: a host
/// that costs next to nothing. Of each interface there is one object, which lives as long as the
/// program. The plug-in must ask what it asked when the tape was made, which it does for the same
/// file; every track that it was given then must have shown its private interface.
///
/// Winds the tape back to its begin. The tape must outlive the write. One write at a time.
tses::IQuerySession& StaticHost(const AnswerTape& tape);

/// Whether the plug-in asked for all answers of the tape, so that none was another call's.
bool StaticHostIsAtEnd();

}  // namespace bench
