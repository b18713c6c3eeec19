#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/SerializerFixture.h"

namespace test {

/// What tests of the elements in a session have in common.
class ElementFixture : public SerializerFixture {
protected:
    /// The calls that the children of "session" cause.
    std::vector<std::string> CallsIn(std::string_view content, const HostSetup& host = {});

    /// The calls that the children of an audio track cause. The session is object 1, the track is
    /// object 2.
    std::vector<std::string> CallsInTrack(std::string_view content, const HostSetup& host = {});

    /// The audio track that is read from such children.
    orvo::AudioTrack ReadInTrack(std::string_view content);

    /// The one element of that name in the file of a session, with the file's indentation below
    /// the element; empty if there is none. Fails the test if the session is not written.
    std::string WrittenElement(std::string_view name, const orvo::Session& session,
                               const HostSetup& host = {});
    std::string WrittenElement(std::string_view name, const orvo::AudioTrack& track,
                               const HostSetup& host = {});

    /// What is read from the file of a session. Fails the test if either direction fails.
    orvo::Session ThroughFile(const orvo::Session& session);

    /// What an interface is asked, by the names of its operations, while a session is written.
    std::vector<std::string> QueriesOf(std::string_view interfaceName,
                                       const orvo::Session& session);

    /// Every call that a document causes, as "IEditAudioClip.SetName", with those that count
    /// references. Fails the test if the document is not read.
    std::vector<std::string> CallsWithReferences(std::string_view document);
    /// The same of a session that is written.
    std::vector<std::string> CallsWithReferences(const orvo::Session& session);

    static orvo::Session WithTrack(orvo::AudioTrack track);
    static HostSetup Null(std::string_view operation);
    /// A host that returns null the second time that it is asked for the operation, and only then.
    static HostSetup NullAtTheSecond(std::string_view operation);
};

/// The first element of that name in a document, as `WrittenElement` gives it.
std::string ElementOf(std::string_view document, std::string_view name);

}  // namespace test
