#pragma once

#include "plugin/xml/SessionDocument.h"

namespace test {

/// What the tests of writing write with: documents of the XML library, or streamed ones if the
/// environment variable ORVO_DOCUMENT is "streamed". The tests run once with each.
tses::DocumentMaker DocumentUnderTest();

/// Switches the features on that an application does, so that a plug-in which is made from now on
/// writes with the same documents.
void UseFeaturesUnderTest();

}  // namespace test
