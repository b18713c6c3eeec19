#include "plugin/elements/clips/EventBlock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "format/Names.h"
#include "platform/kelcore/Paths.h"
#include "plugin/xml/XercesPlatform.h"
#include "tests/support/DocumentUnderTest.h"
#include "tests/support/TemporaryFolder.h"

namespace tses {
namespace {

using testing::HasSubstr;
using testing::Not;

class EventBlock : public testing::Test {
protected:
    EventBlock() { StartXerces(); }
    ~EventBlock() override { StopXerces(); }

    /// What a block leaves in a document, between two elements that must stay side by side.
    std::string Document(const EventBlockSource& source, WriterFault fault = {}) {
        SessionXMLWriter writer(kelcore::PathFromBytes((folder_ / "block.orvo").string()), fault,
                                test::DocumentUnderTest());
        EXPECT_TRUE(writer.StartElement(names::midiClip));
        WriteEventBlock(writer, names::midiEvents, source);
        EXPECT_TRUE(writer.EndElement());
        EXPECT_TRUE(writer.StartElement(names::videoClip) && writer.EndElement());
        EXPECT_TRUE(writer.Save());
        return test::ReadFile(folder_ / "block.orvo");
    }

    static EventBlockSource Bytes(std::vector<kelcore::byte> bytes, bool filled = true) {
        return {[size = bytes.size()] { return static_cast<kelcore::uint32>(size); },
                [bytes = std::move(bytes), filled](kelcore::byte* buffer) {
                    std::copy(bytes.begin(), bytes.end(), buffer);
                    return filled;
                }};
    }

    test::TemporaryFolder folder_;
};

TEST_F(EventBlock, IsWrittenAsTheTextOfItsElement) {
    EXPECT_THAT(Document(Bytes({0, 1, 2})),
                HasSubstr("<midiEvents><![CDATA[AAEC\n]]></midiEvents>"));
}

TEST_F(EventBlock, OfNoBytesIsNotWrittenAndNotAskedFor) {
    bool asked = false;
    const EventBlockSource source{[] { return 0u; }, [&](kelcore::byte*) { return asked = true; }};
    EXPECT_THAT(Document(source), Not(HasSubstr("midiEvents")));
    EXPECT_FALSE(asked);
}

TEST_F(EventBlock, ThatTheHostDoesNotFillIsNotWritten) {
    EXPECT_THAT(Document(Bytes({0, 1, 2}, false)), Not(HasSubstr("midiEvents")));
}

TEST_F(EventBlock, WhoseElementFailsIsMissingAndTheRestIsWhole) {
    const std::string document = Document(Bytes({0, 1, 2}), {1});
    EXPECT_THAT(document, Not(HasSubstr("midiEvents")));
    EXPECT_THAT(document, HasSubstr("\n  <midiClip/>\n"));
    EXPECT_THAT(document, HasSubstr("\n  <videoClip/>\n"));
}

TEST_F(EventBlock, WhoseTextFailsIsEmptyAndTheRestIsWhole) {
    const std::string document = Document(Bytes({0, 1, 2}), {2});
    EXPECT_THAT(document, HasSubstr("\n    <midiEvents/>\n"));
    EXPECT_THAT(document, HasSubstr("\n  <videoClip/>\n"));
}

}  // namespace
}  // namespace tses
