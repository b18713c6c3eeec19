#pragma once

#include "plugin/xml/SessionDocument.h"

namespace test {

/// What the tests of writing write with: streamed documents if `UsesStreamedDocuments`, else those
/// of the XML library.
tses::DocumentMaker DocumentUnderTest();

}  // namespace test
