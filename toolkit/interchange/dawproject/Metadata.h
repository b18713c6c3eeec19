#pragma once

#include <string>
#include <string_view>

#include <orvo/Model.h>
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange::dawproject {

/// The metadata of a session as the document `metadata.xml`. Counts what has no place there.
std::string MetadataOf(const orvo::Session& session, Reporter& reporter);

/// The XMP packet of such a document; empty if it says nothing.
/// @param document  its text; one that is no XML is reported
std::string XmpOfMetadata(std::string_view document, Reporter& reporter);

}  // namespace toolkit::interchange::dawproject
