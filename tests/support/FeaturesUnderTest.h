#pragma once

namespace test {

/// Whether the tests of writing write streamed documents: if the environment variable
/// ORVO_DOCUMENT is "streamed". The tests run once with each kind.
bool UsesStreamedDocuments();

/// Switches on the features that an application does, but that of streamed saves only if they are
/// under test. Call it before making the plug-in.
void UseFeaturesUnderTest();

}  // namespace test
