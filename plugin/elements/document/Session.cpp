#include "plugin/elements/document/Writers.h"

#include "format/document/Document.h"
#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Localizer.h"
#include "platform/kelcore/Strings.h"
#include "plugin/elements/clips/Writers.h"
#include "plugin/elements/state/Writers.h"
#include "plugin/elements/tracks/Writers.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

constexpr std::string_view kFormatDescription =
    "$$$/SessionPlugIns/OrvoNative/FormatDescription=Vantor Tembra @0 Multitrack Session";

// Reading

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
    const auto record = ReadRecord<SessionRecord, kSessionRows>(attributes);
    document_.appVersion = record.appVersion;
    Apply(record, *session_);
}

/// Files of the first version keep this value in "sessionState", later ones in "selectionState".
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
    record.appBuild = record.appVersion + u"." + FormatNumber(kelcore::GetClientBuildNumber());
    return record;
}

}  // namespace

bool WriteSession(SessionXMLWriter& writer, const HostReference<IQuerySession>& session) {
    return writer.StartElement(names::session,
                               ToAttributes<kSessionRows>(QuerySession(*session))) &&
           WriteTracks(writer, session) && WriteSessionState(writer, session) &&
           WriteXmpMetadata(writer, session) && WriteClipGroups(writer, session) &&
           WriteMetronome(writer, session) && WriteSessionProperties(writer, session) &&
           WriteTrackVisibilityPresets(writer, session) && writer.EndElement();
}

}  // namespace tses
