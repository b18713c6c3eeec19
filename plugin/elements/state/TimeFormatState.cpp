#include "plugin/elements/state/TimeFormatState.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/Keywords.h"
#include "plugin/serializer/SerializerImpl.h"

// How times are shown, and the musical grid:
//
//     <timeFormatState beatsPerBar="4" beatsPerMinute="120" customFrameRate="0"
//                      linkToDefaultTimeSettings="true" noteLength="4" subdivisions="16"
//                      timeCodeDropFrame="false" timeCodeFrameRate="30" timeCodeNTSC="true"
//                      timeFormat="timeFormatTimeCode"/>
//
// Writing and reading map the format differently. All timecode codes are written as one keyword,
// and reading works the NTSC ones out of the rate and the flags. A code without a keyword is
// written as its number, which reading does not take back: it then keeps decimal.

namespace tses {
namespace {

namespace format {
constexpr kelcore::int32 decimal = 0;
constexpr kelcore::int32 samples = 1;
constexpr kelcore::int32 timeCode = 2;
constexpr kelcore::int32 ntsc30 = 3;
constexpr kelcore::int32 ntsc30DropFrame = 4;
constexpr kelcore::int32 barsAndBeats = 6;
constexpr kelcore::int32 ntsc60 = 12;
constexpr kelcore::int32 ntsc60DropFrame = 13;
constexpr kelcore::int32 ntsc24 = 14;
}  // namespace format

/// A keyword's first row is the code that it reads as.
constexpr Keyword<kelcore::int32> kFormats[] = {
    {u"timeFormatDecimal", format::decimal},           {u"timeFormatSamples", format::samples},
    {u"timeFormatTimeCode", format::timeCode},         {u"timeFormatTimeCode", format::ntsc30},
    {u"timeFormatTimeCode", format::ntsc30DropFrame},  {u"timeFormatTimeCode", format::ntsc60},
    {u"timeFormatTimeCode", format::ntsc60DropFrame},  {u"timeFormatTimeCode", format::ntsc24},
    {u"timeFormatBarsAndBeats", format::barsAndBeats},
};

struct TimeFormatRecord {
    kelcore::int32 format = format::decimal;
    kelcore::int32 frameRate = 0;
    bool ntsc = false;
    bool dropFrame = false;
    kelcore::int32 customFrameRate = 0;
    bool linkedToDefault = true;
    double beatsPerMinute = 0;
    kelcore::int32 beatsPerBar = 0;
    kelcore::int32 noteLength = 0;
    kelcore::int32 subdivisions = 0;
};

// Reading

/// Any other text, a number included, changes nothing.
void ReadFormat(std::u16string_view text, TimeFormatRecord& record) {
    record.format = FindValue(kFormats, text).value_or(record.format);
}

constexpr Binding<TimeFormatRecord> kBindings[] = {
    {names::beatsPerBar, read::Number<&TimeFormatRecord::beatsPerBar>},
    {names::beatsPerMinute, read::LenientDouble<&TimeFormatRecord::beatsPerMinute>},
    {names::customFrameRate, read::Number<&TimeFormatRecord::customFrameRate>},
    {names::linkToDefaultTimeSettings, read::LenientBool<&TimeFormatRecord::linkedToDefault>},
    {names::noteLength, read::Number<&TimeFormatRecord::noteLength>},
    {names::subdivisions, read::Number<&TimeFormatRecord::subdivisions>},
    {names::timeCodeDropFrame, read::LenientBool<&TimeFormatRecord::dropFrame>},
    {names::timeCodeFrameRate, read::Number<&TimeFormatRecord::frameRate>},
    {names::timeCodeNTSC, read::LenientBool<&TimeFormatRecord::ntsc>},
    {names::timeFormat, ReadFormat},
};

/// NTSC timecode exists at 24, 30 and 60 frames a second; at any other rate it is taken for 30.
void NormaliseNtscTimeCode(TimeFormatRecord& record) {
    if (record.format != format::timeCode || !record.ntsc) {
        return;
    }
    switch (record.frameRate) {
        case 60:
            record.format = record.dropFrame ? format::ntsc60DropFrame : format::ntsc60;
            return;
        case 24:
            record.format = format::ntsc24;
            return;
        default:
            record.format = record.dropFrame ? format::ntsc30DropFrame : format::ntsc30;
            record.frameRate = 30;
    }
}

void Apply(const TimeFormatRecord& record, IEditSession& session) {
    session.SetTimeFormat(record.format, record.frameRate, record.ntsc, record.dropFrame,
                          record.customFrameRate);
    session.SetLinkToDefaultTimeSettings(record.linkedToDefault);
    session.SetMusicalTime(record.beatsPerMinute, record.beatsPerBar, record.noteLength,
                           record.subdivisions);
}

}  // namespace

void Serializer::Impl::StartTimeFormatState(State state, const TagAttributes& attributes) {
    PushState(state);
    TimeFormatRecord record;
    ReadAttributes<kBindings>(attributes, record);
    NormaliseNtscTimeCode(record);
    Apply(record, *session_);
}

// Writing

namespace {

TimeFormatRecord QueryTimeFormat(IQuerySession& session) {
    TimeFormatRecord record;
    session.GetTimeFormat(record.format, record.frameRate, record.ntsc, record.dropFrame,
                          record.customFrameRate);
    record.linkedToDefault = session.IsLinkedToDefaultTimeSettings();
    session.GetMusicalTime(record.beatsPerMinute, record.beatsPerBar, record.noteLength,
                           record.subdivisions);
    return record;
}

std::u16string FormatText(kelcore::int32 format) {
    const auto keyword = FindKeyword(kFormats, format, u"");
    return keyword.empty() ? FormatSigned(format) : std::u16string(keyword);
}

AttributeMap ToAttributes(const TimeFormatRecord& record) {
    return {
        {names::timeFormat, FormatText(record.format)},
        {names::timeCodeFrameRate, FormatSigned(record.frameRate)},
        {names::timeCodeNTSC, FormatBool(record.ntsc)},
        {names::timeCodeDropFrame, FormatBool(record.dropFrame)},
        {names::customFrameRate, FormatSigned(record.customFrameRate)},
        {names::linkToDefaultTimeSettings, FormatBool(record.linkedToDefault)},
        {names::beatsPerMinute, FormatDouble(record.beatsPerMinute)},
        {names::beatsPerBar, FormatSigned(record.beatsPerBar)},
        {names::noteLength, FormatSigned(record.noteLength)},
        {names::subdivisions, FormatSigned(record.subdivisions)},
    };
}

}  // namespace

bool WriteTimeFormatState(SessionXMLWriter& writer, IQuerySession& session) {
    return writer.StartElement(names::timeFormatState, ToAttributes(QueryTimeFormat(session))) &&
           writer.EndElement();
}

}  // namespace tses
