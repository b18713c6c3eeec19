#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <set>

#include "format/Names.h"
#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/SessionNode.h"
#include "reference_host/recorder/CallJson.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/plugin/EverythingSession.h"
#include "tests/support/SerializerFixture.h"
#include "tests/support/SourceFolder.h"

// Whole documents, kept in tests/golden together with the calls that a host sees, one per line.
// "everything" has everything that is written, "read-only" what is read but never written.
// "everything.write.trace" has what the host is asked, in order, when "everything" is written. The
// folder of the session appears as "@FOLDER@". To accept what the code does now, run these tests
// with ORVO_UPDATE_GOLDEN=1 and look at the difference.

namespace tses {
namespace {

using orvo::Session;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

constexpr std::string_view kFolderMark = "@FOLDER@/";

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

std::filesystem::path GoldenPath(const std::string& name) {
    return test::SourceFolder() / "tests" / "golden" / name;
}

void ExpectGolden(const std::string& name, const std::string& actual) {
    if (std::getenv("ORVO_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(GoldenPath(name), std::ios::binary) << actual;
    }
    EXPECT_EQ(test::ReadFile(GoldenPath(name)), actual) << name;
}

std::set<std::string> AllOf(const std::string& document, const char* pattern) {
    std::set<std::string> found;
    const std::regex expression(pattern);
    for (std::sregex_iterator match(document.begin(), document.end(), expression), end;
         match != end; ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

std::set<std::string> ElementsOf(const std::string& document) {
    return AllOf(document, "<([a-zA-Z]+)[ />]");
}

std::set<std::string> AttributesOf(const std::string& document) {
    return AllOf(document, " ([a-zA-Z]+)=[\"']");
}

std::set<std::string> WithoutThoseOf(std::set<std::string> names,
                                     const std::set<std::string>& others) {
    std::erase_if(names, [&](const std::string& name) { return others.contains(name); });
    return names;
}

class Golden : public test::SerializerFixture {
protected:
    Golden() { kelcore::SetClientVersion("25.1", 310); }

    std::string Folder() const { return folder.Path().string() + "/"; }

    Session Everything() const { return test::EverythingSession(Folder()); }

    struct Traced {
        bool ok = false;
        std::string calls;
        Session session;
    };

    /// Reads the file at `Path()` and keeps every call of the host, including those for progress.
    Traced ReadTraced() {
        Traced traced;
        const auto node = refhost::SessionNode::Make();
        {
            refhost::Recorder recorder(RecordInto(traced.calls));
            traced.ok = serializer->Read(Path(), Retain(&recorder.Wrap(node->Edit())));
        }
        traced.calls = Replaced(traced.calls, Folder(), kFolderMark);
        traced.session = node->Value();
        return traced;
    }

    /// Writes a session to `Path()` and keeps every call of the host, including those for progress.
    Traced WriteTraced(const Session& session) {
        Traced traced;
        const auto node = refhost::SessionNode::Make(session);
        {
            refhost::Recorder recorder(RecordInto(traced.calls));
            traced.ok = serializer->Write(Path(), Retain(&recorder.Wrap(node->Query())));
        }
        return traced;
    }

    static refhost::Recorder::Options RecordInto(std::string& calls) {
        refhost::Recorder::Options options;
        options.sink = [&calls](const refhost::CallRecord& call) {
            calls += refhost::FormatCallAsJson(call) + "\n";
        };
        return options;
    }

    /// A golden document as it would be in the folder of this test.
    std::string Document(const std::string& name) const {
        return Replaced(test::ReadFile(GoldenPath(name)), kFolderMark, Folder());
    }
};

TEST_F(Golden, EverythingIsWrittenAsInTheGoldenFile) {
    const auto outcome = Write(Everything());
    ASSERT_TRUE(outcome.ok);
    ExpectGolden("everything.orvo", Replaced(*outcome.file, Folder(), kFolderMark));
}

TEST_F(Golden, EverythingIsReadBackWithoutLoss) {
    folder.Write("session.orvo", Document("everything.orvo"));
    const Traced traced = ReadTraced();
    ASSERT_TRUE(traced.ok);
    EXPECT_EQ(traced.session, Everything());
}

TEST_F(Golden, EverythingReachesTheHostInTheseCalls) {
    folder.Write("session.orvo", Document("everything.orvo"));
    ExpectGolden("everything.trace", ReadTraced().calls);
}

TEST_F(Golden, TheHostIsAskedForEverythingInTheseCalls) {
    const Traced traced = WriteTraced(Everything());
    ASSERT_TRUE(traced.ok);
    ExpectGolden("everything.write.trace", traced.calls);
}

TEST_F(Golden, EverythingThatWasReadBackIsWrittenWithTheSameBytes) {
    const std::string document = Document("everything.orvo");
    folder.Write("session.orvo", document);
    EXPECT_EQ(Write(ReadTraced().session).file, document);
}

TEST_F(Golden, EverythingHasAllSixtyKindsOfElementsThatAreWritten) {
    EXPECT_EQ(ElementsOf(Document("everything.orvo")).size(), 60u);
}

TEST_F(Golden, WhatIsOnlyReadReachesTheHostInTheseCalls) {
    folder.Write("session.orvo", Document("read-only.orvo"));
    const Traced traced = ReadTraced();
    ASSERT_TRUE(traced.ok);
    ExpectGolden("read-only.trace", traced.calls);
}

const std::set<std::string> kOnlyReadElements = {"clip",
                                                 "trackPanner",
                                                 "fivePointOneLeft",
                                                 "fivePointOneRight",
                                                 "fivePointOneCenter",
                                                 "fivePointOneLeftSurround",
                                                 "fivePointOneRightSurround",
                                                 "fivePointOneLFE"};
const std::set<std::string> kOnlyReadAttributes = {
    "volume", "mute", "angle", "balanceLeftRight", "panLeftRight", "radius", "stereoSpread"};

TEST_F(Golden, WhatIsOnlyReadIsNotWrittenAgain) {
    const std::string document = Document("read-only.orvo");
    folder.Write("session.orvo", document);
    const std::string written = *Write(ReadTraced().session).file;
    for (const std::string& element : kOnlyReadElements) {
        EXPECT_THAT(ElementsOf(document), Contains(element));
        EXPECT_THAT(ElementsOf(written), Not(Contains(element)));
    }
    for (const std::string& attribute : kOnlyReadAttributes) {
        EXPECT_THAT(AttributesOf(document), Contains(attribute));
        EXPECT_THAT(AttributesOf(written), Not(Contains(attribute)));
    }
}

TEST_F(Golden, TheTwoDocumentsHaveEveryNameThatTheFormatKnows) {
    std::set<std::string> known;
#define TSES_ADD_NAME(name) known.insert(kelcore::UTF16to8(names::name));
    TSES_NAMES(TSES_ADD_NAME)
#undef TSES_ADD_NAME

    std::set<std::string> used;
    for (const char* const name : {"everything.orvo", "read-only.orvo"}) {
        used.merge(ElementsOf(Document(name)));
        used.merge(AttributesOf(Document(name)));
    }
    EXPECT_THAT(WithoutThoseOf(known, used), IsEmpty());
    EXPECT_THAT(WithoutThoseOf(used, known),
                UnorderedElementsAre("encoding", "standalone"));  // of the declaration
}

}  // namespace
}  // namespace tses
