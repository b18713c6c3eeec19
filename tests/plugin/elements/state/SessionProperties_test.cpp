#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Property;
using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;

class SessionProperties : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfProperties(const std::string& content,
                                               const test::HostSetup& host = {}) {
        return CallsIn("<properties>" + content + "</properties>", host);
    }

    static Session With(std::vector<Property> properties) {
        Session session;
        session.properties = std::move(properties);
        return session;
    }
};

TEST_F(SessionProperties, KeysAndValuesReachTheHostInTheOrderOfTheFile) {
    EXPECT_THAT(CallsOfProperties("<property key='b'>2</property><property key='a'>1</property>"
                                  "<property key='b'>3</property>"),
                ElementsAre("IEditSession#1.GetProperties() -> IEditProperties#2",
                            "IEditProperties#2.SetProperty(\"b\",\"2\")",
                            "IEditProperties#2.SetProperty(\"a\",\"1\")",
                            "IEditProperties#2.SetProperty(\"b\",\"3\")"));
}

TEST_F(SessionProperties, WithoutPropertiesTheHostIsStillAsked) {
    EXPECT_THAT(CallsOfProperties(""),
                ElementsAre("IEditSession#1.GetProperties() -> IEditProperties#2"));
}

TEST_F(SessionProperties, AValueLosesItsOuterBlanksAndLineEnds) {
    EXPECT_THAT(CallsOf(CallsOfProperties("<property key=' k '> \t\r\n a  b\n\n</property>"),
                        "SetProperty"),
                ElementsAre("IEditProperties#2.SetProperty(\" k \",\"a  b\")"));
}

TEST_F(SessionProperties, OnlyAsciiBlanksAreTrimmed) {
    EXPECT_THAT(
        CallsOf(CallsOfProperties("<property key='k'>\u00a0a\u00a0</property>"), "SetProperty"),
        ElementsAre("IEditProperties#2.SetProperty(\"k\",\"\u00a0a\u00a0\")"));
}

TEST_F(SessionProperties, AMissingKeyIsEmptyEvenAfterAPropertyThatHadOne) {
    EXPECT_THAT(CallsOf(CallsOfProperties("<property key='a'>1</property><property>2</property>"),
                        "SetProperty"),
                ElementsAre("IEditProperties#2.SetProperty(\"a\",\"1\")",
                            "IEditProperties#2.SetProperty(\"\",\"2\")"));
}

TEST_F(SessionProperties, AnEmptyPropertyHasAnEmptyValue) {
    EXPECT_THAT(CallsOf(CallsOfProperties("<property key='a'/>"), "SetProperty"),
                ElementsAre("IEditProperties#2.SetProperty(\"a\",\"\")"));
}

TEST_F(SessionProperties, AHostWithoutPropertiesGetsNone) {
    EXPECT_THAT(
        CallsOfProperties("<property key='a'>1</property>", Null("IEditSession.GetProperties")),
        ElementsAre("IEditSession#1.GetProperties() -> null"));
}

TEST_F(SessionProperties, ThatTheHostReportsAsNullDoNotReachTheEarlierOnes) {
    EXPECT_THAT(CallsIn("<properties><property key='a'>1</property></properties>"
                        "<properties><property key='b'>2</property></properties>",
                        NullAtTheSecond("IEditSession.GetProperties")),
                ElementsAre("IEditSession#1.GetProperties() -> IEditProperties#2",
                            "IEditProperties#2.SetProperty(\"a\",\"1\")",
                            "IEditSession#1.GetProperties() -> null"));
}

TEST_F(SessionProperties, AreWrittenAsTheTextOfTheirKeys) {
    EXPECT_EQ(WrittenElement("properties", With({{"a", "1 < 2"}, {"b & c", "x"}})),
              "<properties>\n"
              "  <property key=\"a\">1 &lt; 2</property>\n"
              "  <property key=\"b &amp; c\">x</property>\n"
              "</properties>");
}

TEST_F(SessionProperties, AnEmptyValueIsWrittenAsAnEmptyElement) {
    EXPECT_EQ(WrittenElement("properties", With({{"a", ""}})),
              "<properties>\n  <property key=\"a\"/>\n</properties>");
}

TEST_F(SessionProperties, AValueThatTheHostReportsAsNullIsWrittenAsAnEmptyElement) {
    EXPECT_THAT(WrittenElement("properties", With({{"a", "1"}}), Null("IQueryProperties.GetValue")),
                HasSubstr("<property key=\"a\"/>"));
}

TEST_F(SessionProperties, TheElementIsWrittenEvenWithoutProperties) {
    EXPECT_EQ(WrittenElement("properties", Session{}), "<properties/>");
    EXPECT_EQ(WrittenElement("properties", With({{"a", "1"}}), Null("IQuerySession.GetProperties")),
              "<properties/>");
}

TEST_F(SessionProperties, SurviveAWriteAndARead) {
    const Session session = With({{"", "no key"}, {"a", ""}, {" b ", "<x>&\"'\n\ty"}});
    EXPECT_EQ(ThroughFile(session).properties, session.properties);
}

TEST_F(SessionProperties, AValuesOuterBlanksAreLostByAWriteAndARead) {
    EXPECT_THAT(ThroughFile(With({{"a", " 1 "}})).properties, ElementsAre(Property{"a", "1"}));
}

}  // namespace
}  // namespace tses
