#include "bench/NullHost.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "reference_host/Plugin.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"

namespace bench {
namespace {

using tses::SessionResult;

struct Calls {
    SessionResult result = SessionResult::Ok;
    int all = 0;         // but the counting of references
    int references = 0;  // taken and not given back
    int messages = 0;
    int nulls = 0;  // in place of an object

    void Count(const refhost::CallRecord& call) {
        if (call.operation == "AddReference") {
            ++references;
        } else if (call.operation == "Release") {
            --references;
        } else {
            ++all;
            messages += call.operation == "LogMessage" ? 1 : 0;
            nulls += call.returned && call.returned->IsNull() ? 1 : 0;
        }
    }
};

Calls CallsOfReading(const std::filesystem::path& path) {
    Calls calls;
    refhost::Recorder recorder({.sink = [&](const refhost::CallRecord& call) { calls.Count(call); },
                                .interceptor = {},
                                .recordReferences = true});
    refhost::Plugin plugin;
    calls.result = plugin.Read(path.u16string(), recorder.Wrap(NullHost()));
    return calls;
}

TEST(NullHost, TakesTheGoldenFilesWhole) {
    for (const char* const name : {"everything.orvo", "read-only.orvo"}) {
        const Calls calls = CallsOfReading(test::SourceFolder() / "tests/golden" / name);
        EXPECT_EQ(calls.result, SessionResult::Ok) << name;
        EXPECT_GT(calls.all, 50) << name;
        EXPECT_EQ(calls.references, 0) << name;
        EXPECT_EQ(calls.messages, 0) << name;
        EXPECT_EQ(calls.nulls, 0) << name;
    }
}

TEST(NullHost, GetsEachCallOnce) {
    const test::TemporaryFolder folder;
    const Calls empty = CallsOfReading(folder.Write("a.orvo", "<orvo><files/></orvo>"));
    const Calls two =
        CallsOfReading(folder.Write("b.orvo",
                                    "<orvo><files><file id='1' absolutePath='/a.wav'/>"
                                    "<file id='2' absolutePath='/b.wav'/></files></orvo>"));
    EXPECT_EQ(two.result, SessionResult::Ok);
    EXPECT_EQ(two.all, empty.all + 4);  // for each file GetFile and SetPath
}

TEST(NullHost, TakesWhatTheParserSays) {
    const test::TemporaryFolder folder;
    const Calls calls = CallsOfReading(folder.Write("a.orvo", "<orvo>"));
    EXPECT_EQ(calls.result, SessionResult::ReadFailed);
    EXPECT_EQ(calls.messages, 1);
}

}  // namespace
}  // namespace bench
