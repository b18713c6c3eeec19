#include "plugin/xml/SessionParser.h"

#include <xercesc/util/XMLUni.hpp>

#include "tests/plugin/xml/SessionXMLReaderFixture.h"

namespace tses {
namespace {

class SessionParserTest : public SessionXMLReaderTest {
protected:
    SessionXMLDefaultHandler handler{&events, &events};
    SessionParser parser{handler};
};

TEST_F(SessionParserTest, OpensNoEntityByItself) {
    EXPECT_TRUE(parser.getFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution));
}

}  // namespace
}  // namespace tses
