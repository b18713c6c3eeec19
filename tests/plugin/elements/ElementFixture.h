#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/SerializerFixture.h"

namespace test {

/// The base of the tests for the elements in a session.
class ElementFixture : public SerializerFixture {
protected:
    /// The calls that the children of "session" cause.
    std::vector<std::string> CallsIn(std::string_view content, const HostSetup& host = {});

    /// The calls that the children of an audio track cause. The session is object 1, the track is
    /// object 2.
    std::vector<std::string> CallsInTrack(std::string_view content, const HostSetup& host = {});

    /// The audio track that is read from these children.
    orvo::AudioTrack ReadInTrack(std::string_view content);

    /// The only element of that name in the file of a session, with the file's indentation below
    /// it; empty if there is none. Fails the test if the session is not written.
    std::string WrittenElement(std::string_view name, const orvo::Session& session,
                               const HostSetup& host = {});
    std::string WrittenElement(std::string_view name, const orvo::AudioTrack& track,
                               const HostSetup& host = {});

    /// What a read of the session's file gives. Fails the test if either direction fails.
    orvo::Session ThroughFile(const orvo::Session& session);

    /// The operations of an interface that are called while a session is written, by name.
    std::vector<std::string> QueriesOf(std::string_view interfaceName,
                                       const orvo::Session& session);

    /// Every call that a document causes, as "IEditAudioClip.SetName", including the counting of
    /// references. Fails the test if the document is not read.
    std::vector<std::string> CallsWithReferences(std::string_view document);
    /// The same for writing a session.
    std::vector<std::string> CallsWithReferences(const orvo::Session& session);

    static orvo::Session WithTrack(orvo::AudioTrack track);
    static HostSetup Null(std::string_view operation);
    /// A host that returns null only when it is asked for the operation the second time.
    static HostSetup NullAtTheSecond(std::string_view operation);
};

/// The first element of that name in a document, in the form of `WrittenElement`.
std::string ElementOf(std::string_view document, std::string_view name);

}  // namespace test
