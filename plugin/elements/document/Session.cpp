#include "plugin/elements/document/Session.h"

#include <optional>

#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Localizer.h"
#include "platform/kelcore/Strings.h"
#include "plugin/elements/clips/ClipGroups.h"
#include "plugin/elements/state/Metronome.h"
#include "plugin/elements/state/SessionProperties.h"
#include "plugin/elements/state/SessionState.h"
#include "plugin/elements/state/XmpMetadata.h"
#include "plugin/elements/tracks/TrackVisibility.h"
#include "plugin/elements/tracks/Tracks.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/Keywords.h"
#include "plugin/serializer/SerializerImpl.h"

// The session's audio format and the version of the application that wrote it:
//
//     <session appBuild="25.1.310" appVersion="25.1" audioChannelType="stereo" bitDepth="32"
//              duration="480000" sampleRate="48000"> ... </session>
//
// "appBuild" is written for people and never read.

namespace tses {
namespace {

constexpr std::string_view kFormatDescription =
    "$$$/SessionPlugIns/OrvoNative/FormatDescription=Vantor Tembra @0 Multitrack Session";

/// Files of this very version keep the value that "session" ends with elsewhere than later ones.
constexpr std::u16string_view kFirstVersion = u"4.0";

struct SessionRecord {
    kelcore::uint32 sampleRate = 48000;
    std::optional<kelcore::int32> channelCount;  // none: the host keeps its own
    kelcore::int64 duration = 0;
    kelcore::uint32 bitDepth = 32;
    std::u16string appVersion{kFirstVersion};
};

// Reading

/// Signed here, unsigned on writing: that is how hosts have always read the rate.
void ReadSampleRate(std::u16string_view text, SessionRecord& record) {
    auto sampleRate = static_cast<kelcore::int32>(record.sampleRate);
    ParseSigned(text, sampleRate);
    record.sampleRate = static_cast<kelcore::uint32>(sampleRate);
}

/// An unknown keyword changes nothing.
void ReadChannelType(std::u16string_view text, SessionRecord& record) {
    if (const auto channels = FindValue(kChannelLayouts, text)) {
        record.channelCount = static_cast<kelcore::int32>(*channels);
    }
}

constexpr Binding<SessionRecord> kBindings[] = {
    {names::appVersion, read::Text<&SessionRecord::appVersion>},
    {names::audioChannelType, ReadChannelType},
    {names::bitDepth, read::Number<&SessionRecord::bitDepth>},
    {names::duration, read::Number<&SessionRecord::duration>},
    {names::sampleRate, ReadSampleRate},
};

void Apply(const SessionRecord& record, IEditSession& session) {
    if (record.channelCount) {
        session.SetChannelCount(*record.channelCount);
    }
    session.SetSampleRate(record.sampleRate);
    session.SetDuration(record.duration);
    session.SetBitDepth(record.bitDepth);
    const std::u16string description =
        kelcore::Localizer::Lookup(kFormatDescription, {record.appVersion});
    session.SetFormatDescription(description.c_str());
}

}  // namespace

void Serializer::Impl::StartSession(State state, const TagAttributes& attributes) {
    PushState(state);
    SessionRecord record;
    ReadAttributes<kBindings>(attributes, record);
    document_.appVersion = record.appVersion;
    Apply(record, *session_);
}

void Serializer::Impl::EndSession() {
    session_->SetVersionDependentValue(document_.appVersion == kFirstVersion
                                           ? savedState_.ctiPosition
                                           : savedState_.selectionStart);
    AdvanceProgress();
}

// Writing

namespace {

SessionRecord QuerySession(IQuerySession& session) {
    SessionRecord record;
    record.sampleRate = session.GetSampleRate();
    record.channelCount = session.GetChannelCount();
    record.duration = session.GetDuration();
    record.bitDepth = session.GetBitDepth();
    record.appVersion = kelcore::UTF8to16(kelcore::GetClientVersion());
    return record;
}

/// Every other number of channels is written as stereo.
std::u16string_view ChannelTypeKeyword(kelcore::int32 channelCount) {
    return FindKeyword(kChannelLayouts, static_cast<kelcore::uint32>(channelCount), u"stereo");
}

AttributeMap ToAttributes(const SessionRecord& record) {
    AttributeMap attributes;
    attributes.Set(names::sampleRate, FormatUnsigned(record.sampleRate));
    attributes.Set(names::audioChannelType, ChannelTypeKeyword(record.channelCount.value_or(0)));
    attributes.Set(names::duration, FormatInt64(record.duration));
    attributes.Set(names::bitDepth, FormatUnsigned(record.bitDepth));
    attributes.Set(names::appVersion, record.appVersion);
    attributes.Set(names::appBuild,
                   record.appVersion + u"." + FormatUnsigned(kelcore::GetClientBuildNumber()));
    return attributes;
}

}  // namespace

bool WriteSession(SessionXMLWriter& writer, const HostReference<IQuerySession>& session) {
    return writer.StartElement(names::session, ToAttributes(QuerySession(*session))) &&
           WriteTracks(writer, session) && WriteSessionState(writer, session) &&
           WriteXmpMetadata(writer, session) && WriteClipGroups(writer, session) &&
           WriteMetronome(writer, session) && WriteSessionProperties(writer, session) &&
           WriteTrackVisibilityPresets(writer, session) && writer.EndElement();
}

}  // namespace tses
