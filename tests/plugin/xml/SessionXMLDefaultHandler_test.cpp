#include "plugin/xml/SessionXMLDefaultHandler.h"

#include <gmock/gmock.h>

#include "tests/plugin/xml/SessionXMLReaderFixture.h"

// What the parser reports, including reports that it never makes without checking a document type.

namespace tses {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using testing::StartsWith;

class SessionXMLDefaultHandlerTest : public SessionXMLReaderTest {
protected:
    SessionXMLDefaultHandlerTest() {
        events.throwOnError = false;
        handler.BeforeParse(u"/a.orvo");
    }

    SessionXMLDefaultHandler handler{&events, &events};
    xercesc::SAXParseException report{u"odd", u"pub", u"sys", 3, 4};
};

TEST_F(SessionXMLDefaultHandlerTest, EveryReportReachesTheReceiverWithItsPlace) {
    handler.warning(report);
    handler.error(report);
    handler.fatalError(report);
    EXPECT_THAT(events.problems,
                ElementsAre("warning 3:4 [pub][sys] odd", "error 3:4 [pub][sys] odd",
                            "fatal 3:4 [pub][sys] odd"));
}

TEST_F(SessionXMLDefaultHandlerTest, OnlyAFatalErrorIsRememberedUntilTheNextParse) {
    handler.warning(report);
    handler.error(report);
    EXPECT_FALSE(handler.SawFatalError());
    handler.fatalError(report);
    EXPECT_TRUE(handler.SawFatalError());
    handler.BeforeParse(u"/b.orvo");
    EXPECT_FALSE(handler.SawFatalError());
}

TEST_F(SessionXMLDefaultHandlerTest, ARefusalIsAFatalErrorEvenIfTheReceiverLetsItPass) {
    EXPECT_THROW(handler.startDTD(u"orvo", nullptr, nullptr), DocumentRefused);
    EXPECT_TRUE(handler.SawFatalError());
    ASSERT_THAT(events.problems, SizeIs(1));
    EXPECT_THAT(events.problems[0], StartsWith("fatal 1:1 [][/a.orvo] refused: "));
}

}  // namespace
}  // namespace tses
