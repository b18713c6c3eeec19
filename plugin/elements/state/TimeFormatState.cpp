#include "plugin/elements/state/Writers.h"

#include "format/state/TimeFormat.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// Writing and reading map the format differently. Writing uses one keyword for all timecode codes;
// reading tells the NTSC ones by the rate and the flags. Writing spells a code without a keyword as
// its number; reading does not accept the number and keeps decimal.

namespace tses {
namespace {

void NormaliseNtscTimeCode(TimeFormatRecord& record) {
    if (record.format == timeFormats::timeCode && record.ntsc) {
        const NtscTimeCode& code = NtscTimeCodeOf(record.frameRate, record.dropFrame);
        record.format = code.format;
        record.frameRate = code.frameRate;
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
    auto record = ReadRecord<TimeFormatRecord, kTimeFormatRows>(attributes);
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

}  // namespace

bool WriteTimeFormatState(SessionXMLWriter& writer, IQuerySession& session) {
    return writer.StartElement(names::timeFormatState,
                               ToAttributes<kTimeFormatRows>(QueryTimeFormat(session))) &&
           writer.EndElement();
}

}  // namespace tses
