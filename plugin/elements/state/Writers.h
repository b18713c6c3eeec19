#pragma once

// The functions that write the elements of this folder. Each is defined in the file of its element,
// next to the functions that read it.

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "metronome" with its track and the musical timeline.
bool WriteMetronome(SessionXMLWriter& writer, HostReference<IQuerySession> session);

/// Writes "mixingOptionState".
bool WriteMixingOptionState(SessionXMLWriter& writer, IQuerySession& session);

/// Writes "selectionState".
bool WriteSelectionState(SessionXMLWriter& writer, IQuerySession& session);

/// Writes the session's "properties".
bool WriteSessionProperties(SessionXMLWriter& writer, HostReference<IQuerySession> session);

/// Writes "sessionState" and its four children.
bool WriteSessionState(SessionXMLWriter& writer, HostReference<IQuerySession> session);

/// Writes "timeFormatState".
bool WriteTimeFormatState(SessionXMLWriter& writer, IQuerySession& session);

/// Writes "viewState".
bool WriteViewState(SessionXMLWriter& writer, IQuerySession& session);

/// Writes "xmpMetadata" if the session has any.
bool WriteXmpMetadata(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
