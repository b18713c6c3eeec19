#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using orvo::TimeFormat;
using testing::ElementsAre;
using testing::HasSubstr;

class TimeFormatState : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfFormat(const std::string& attributes) {
        const auto calls =
            CallsIn("<sessionState><timeFormatState " + attributes + "/></sessionState>");
        return {calls.begin() + 2, calls.end()};  // without the two of the state itself
    }

    TimeFormat ReadFormat(const std::string& attributes) {
        return ReadInSession("<sessionState><timeFormatState " + attributes + "/></sessionState>")
            .session.timeFormat;
    }

    TimeFormat ReadTimeCode(const std::string& attributes) {
        return ReadFormat("timeFormat='timeFormatTimeCode' " + attributes);
    }

    static Session With(const TimeFormat& format) {
        Session session;
        session.timeFormat = format;
        return session;
    }

    std::string WrittenFormat(kelcore::int32 code) {
        return WrittenElement("timeFormatState", With({.format = orvo::TimeDisplay{code}}));
    }
};

TEST_F(TimeFormatState, FormatLinkAndMusicalTimeReachTheHostInThisOrder) {
    EXPECT_THAT(
        CallsOfFormat("timeFormat='timeFormatBarsAndBeats' timeCodeFrameRate='25' "
                      "timeCodeNTSC='true' timeCodeDropFrame='true' customFrameRate='-9' "
                      "linkToDefaultTimeSettings='false' beatsPerMinute='120.5' beatsPerBar='3' "
                      "noteLength='4' subdivisions='16'"),
        ElementsAre("IEditSession#1.SetTimeFormat(6,25,true,true,-9)",
                    "IEditSession#1.SetLinkToDefaultTimeSettings(false)",
                    "IEditSession#1.SetMusicalTime(120.5,3,4,16)"));
}

TEST_F(TimeFormatState, WithoutAttributesItIsDecimalAndLinkedToTheDefaults) {
    EXPECT_THAT(CallsOfFormat(""), ElementsAre("IEditSession#1.SetTimeFormat(0,0,false,false,0)",
                                               "IEditSession#1.SetLinkToDefaultTimeSettings(true)",
                                               "IEditSession#1.SetMusicalTime(0,0,0,0)"));
}

TEST_F(TimeFormatState, WithoutTheLinkItIsLinkedToTheDefaults) {
    EXPECT_TRUE(ReadFormat("timeFormat='timeFormatSamples'").linkedToDefaults);
}

TEST_F(TimeFormatState, EachKeywordHasItsCode) {
    EXPECT_EQ(ReadFormat("timeFormat='timeFormatDecimal'").format, orvo::TimeDisplay::Decimal);
    EXPECT_EQ(ReadFormat("timeFormat='timeFormatSamples'").format, orvo::TimeDisplay::Samples);
    EXPECT_EQ(ReadFormat("timeFormat='timeFormatTimeCode'").format, orvo::TimeDisplay::Timecode);
    EXPECT_EQ(ReadFormat("timeFormat='timeFormatBarsAndBeats'").format,
              orvo::TimeDisplay::BarsAndBeats);
}

TEST_F(TimeFormatState, AMisspeltFormatOrANumberStaysDecimal) {
    for (const std::string text : {"timeformatsamples", "Samples", "1", "6", ""}) {
        EXPECT_EQ(ReadFormat("timeFormat='" + text + "'").format, orvo::TimeDisplay::Decimal)
            << text;
    }
}

TEST_F(TimeFormatState, NtscTimeCodeIsRecognisedByItsFrameRateAndDropFrame) {
    struct Row {
        std::string attributes;
        kelcore::int32 format;
    };
    const Row rows[] = {
        {"timeCodeFrameRate='60'", 12}, {"timeCodeFrameRate='60' timeCodeDropFrame='true'", 13},
        {"timeCodeFrameRate='30'", 3},  {"timeCodeFrameRate='30' timeCodeDropFrame='true'", 4},
        {"timeCodeFrameRate='24'", 14}, {"timeCodeFrameRate='24' timeCodeDropFrame='true'", 14},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ReadTimeCode("timeCodeNTSC='true' " + row.attributes).format,
                  orvo::TimeDisplay{row.format})
            << row.attributes;
    }
}

TEST_F(TimeFormatState, NtscTimeCodeKeepsTheRateAndTheDropFrameThatItWasRecognisedBy) {
    const TimeFormat format =
        ReadTimeCode("timeCodeNTSC='1' timeCodeFrameRate='24' timeCodeDropFrame='1'");
    EXPECT_EQ(format.frameRate, 24);
    EXPECT_TRUE(format.ntsc);
    EXPECT_TRUE(format.dropFrame);
}

TEST_F(TimeFormatState, NtscTimeCodeAtAnyOtherRateCountsAsThirty) {
    for (const std::string rate : {"25", "0", "-30", "120", "x"}) {
        const std::string attributes = "timeCodeNTSC='true' timeCodeFrameRate='" + rate + "' ";
        EXPECT_EQ(ReadTimeCode(attributes).format, orvo::TimeDisplay::Ntsc30) << rate;
        EXPECT_EQ(ReadTimeCode(attributes).frameRate, 30) << rate;
        EXPECT_EQ(ReadTimeCode(attributes + "timeCodeDropFrame='true'").format,
                  orvo::TimeDisplay::Ntsc30Drop)
            << rate;
        EXPECT_EQ(ReadTimeCode(attributes + "timeCodeDropFrame='true'").frameRate, 30) << rate;
    }
}

TEST_F(TimeFormatState, TimeCodeThatIsNotNtscKeepsItsRate) {
    for (const std::string rate : {"24", "25", "30", "60", "7"}) {
        const TimeFormat format =
            ReadTimeCode("timeCodeDropFrame='true' timeCodeFrameRate='" + rate + "'");
        EXPECT_EQ(format.format, orvo::TimeDisplay::Timecode) << rate;
        EXPECT_EQ(std::to_string(format.frameRate), rate);
    }
}

TEST_F(TimeFormatState, NtscMattersOnlyToTimeCode) {
    const TimeFormat format =
        ReadFormat("timeFormat='timeFormatSamples' timeCodeNTSC='true' timeCodeFrameRate='25'");
    EXPECT_EQ(format.format, orvo::TimeDisplay::Samples);
    EXPECT_EQ(format.frameRate, 25);
}

TEST_F(TimeFormatState, SwitchesAreOnForTrueAndForOne) {
    for (const std::string text : {"true", "1"}) {
        const TimeFormat format = ReadFormat("timeCodeNTSC='" + text + "' timeCodeDropFrame='" +
                                             text + "' linkToDefaultTimeSettings='" + text + "'");
        EXPECT_TRUE(format.ntsc && format.dropFrame && format.linkedToDefaults) << text;
    }
    for (const std::string text : {"True", "yes", "0", ""}) {
        const TimeFormat format = ReadFormat("timeCodeNTSC='" + text + "' timeCodeDropFrame='" +
                                             text + "' linkToDefaultTimeSettings='" + text + "'");
        EXPECT_FALSE(format.ntsc || format.dropFrame || format.linkedToDefaults) << text;
    }
}

TEST_F(TimeFormatState, ATempoMayHaveADecimalComma) {
    EXPECT_EQ(CallsOfFormat("beatsPerMinute='120,5'").back(),
              "IEditSession#1.SetMusicalTime(120.5,0,0,0)");
}

TEST_F(TimeFormatState, NumbersThatDoNotParseAreZero) {
    EXPECT_EQ(CallsOfFormat("beatsPerMinute='fast' beatsPerBar='x' noteLength='' "
                            "subdivisions='1.5' timeCodeFrameRate='y' customFrameRate='z'"),
              CallsOfFormat(""));
}

// Writing

TEST_F(TimeFormatState, IsWrittenWithEveryAttribute) {
    Session session = With({orvo::TimeDisplay::Timecode, 25, false, true, -9, false});
    session.musicalTime = {120.5, 3, 4, 16};
    EXPECT_EQ(WrittenElement("timeFormatState", session),
              "<timeFormatState beatsPerBar=\"3\" beatsPerMinute=\"120.5\" customFrameRate=\"-9\" "
              "linkToDefaultTimeSettings=\"false\" noteLength=\"4\" subdivisions=\"16\" "
              "timeCodeDropFrame=\"true\" timeCodeFrameRate=\"25\" timeCodeNTSC=\"false\" "
              "timeFormat=\"timeFormatTimeCode\"/>");
}

TEST_F(TimeFormatState, EachCodeHasItsKeywordAndAllTimeCodesShareOne) {
    EXPECT_THAT(WrittenFormat(0), HasSubstr("timeFormat=\"timeFormatDecimal\""));
    EXPECT_THAT(WrittenFormat(1), HasSubstr("timeFormat=\"timeFormatSamples\""));
    EXPECT_THAT(WrittenFormat(6), HasSubstr("timeFormat=\"timeFormatBarsAndBeats\""));
    for (const kelcore::int32 code : {2, 3, 4, 12, 13, 14}) {
        EXPECT_THAT(WrittenFormat(code), HasSubstr("timeFormat=\"timeFormatTimeCode\"")) << code;
    }
}

TEST_F(TimeFormatState, ACodeWithoutAKeywordIsWrittenAsItsNumber) {
    for (const kelcore::int32 code :
         {5, 7, 11, 15, -1, std::numeric_limits<kelcore::int32>::min()}) {
        EXPECT_THAT(WrittenFormat(code), HasSubstr("timeFormat=\"" + std::to_string(code) + "\""));
    }
}

TEST_F(TimeFormatState, SurvivesAWriteAndARead) {
    const TimeFormat formats[] = {{orvo::TimeDisplay::Decimal, 0, false, false, 0, true},
                                  {orvo::TimeDisplay::Samples, -5, true, true, 7, false},
                                  {orvo::TimeDisplay::Timecode, 25, false, true, 0, true},
                                  {orvo::TimeDisplay::Ntsc30, 30, true, false, 0, false},
                                  {orvo::TimeDisplay::Ntsc30Drop, 30, true, true, 0, true},
                                  {orvo::TimeDisplay::BarsAndBeats, 24, true, false, 0, true},
                                  {orvo::TimeDisplay::Ntsc60, 60, true, false, 0, true},
                                  {orvo::TimeDisplay::Ntsc60Drop, 60, true, true, 0, true},
                                  {orvo::TimeDisplay::Ntsc24, 24, true, false, 0, true},
                                  {orvo::TimeDisplay::Ntsc24, 24, true, true, 0, true}};
    for (const TimeFormat& format : formats) {
        EXPECT_EQ(ThroughFile(With(format)).timeFormat, format);
    }
}

TEST_F(TimeFormatState, TheMusicalTimeSurvivesAWriteAndARead) {
    Session session;
    session.musicalTime = {0.1 + 0.2, std::numeric_limits<kelcore::int32>::min(),
                           std::numeric_limits<kelcore::int32>::max(), -1};
    EXPECT_EQ(ThroughFile(session).musicalTime, session.musicalTime);
}

TEST_F(TimeFormatState, ACodeWithoutAKeywordComesBackAsDecimal) {
    EXPECT_EQ(ThroughFile(With({.format = orvo::TimeDisplay{7}})).timeFormat.format,
              orvo::TimeDisplay::Decimal);
}

TEST_F(TimeFormatState, AnNtscCodeWithoutTheMatchingFlagsComesBackAsPlainTimeCode) {
    EXPECT_EQ(ThroughFile(With({.format = orvo::TimeDisplay::Ntsc60Drop, .frameRate = 60}))
                  .timeFormat.format,
              orvo::TimeDisplay::Timecode);
}

}  // namespace
}  // namespace tses
