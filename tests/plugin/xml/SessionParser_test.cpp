#include "plugin/xml/SessionParser.h"

#include <gmock/gmock.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "tests/plugin/xml/SessionXMLReaderFixture.h"

namespace tses {
namespace {

class SessionParserTest : public SessionXMLReaderTest {
protected:
    SessionXMLDefaultHandler handler{&events, &events};
    SessionParser parser{handler};
};

/// Counts the errors of a parser with the default scanner and the session parser's other settings.
class DefaultScanner : private xercesc::DefaultHandler {
public:
    DefaultScanner() {
        parser_.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
        parser_.setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
        parser_.setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
        parser_.setErrorHandler(this);
    }

    std::size_t ErrorsOf(std::string_view document) {
        errors_ = 0;
        parser_.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(document.data()),
                                                 document.size(), "document"));
        return errors_;
    }

private:
    void error(const xercesc::SAXParseException&) override { ++errors_; }
    void fatalError(const xercesc::SAXParseException&) override { ++errors_; }

    xercesc::SAX2XMLReaderImpl parser_;
    std::size_t errors_ = 0;
};

TEST_F(SessionParserTest, ReadsASchemaLocationThatTheDefaultScannerRejects) {
    const std::string half =
        "<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='urn:x'/>";
    EXPECT_TRUE(ParseText(half));
    EXPECT_THAT(events.problems, testing::IsEmpty());
    EXPECT_EQ(DefaultScanner().ErrorsOf(half), 1u);
    EXPECT_EQ(DefaultScanner().ErrorsOf("<a/>"), 0u);
}

TEST_F(SessionParserTest, OpensNoEntityByItself) {
    EXPECT_TRUE(parser.getFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution));
}

}  // namespace
}  // namespace tses
