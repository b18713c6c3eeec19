#include "plugin/elements/document/Writers.h"

#include "format/document/Document.h"
#include "platform/kelcore/Trace.h"
#include "plugin/elements/tracks/Writers.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// The root has no handler: on reading, the dispatch itself accepts it.

namespace tses {
namespace {

constexpr kelcore::uint32 kSessionDone = 2;
constexpr kelcore::uint32 kFilesDone = 3;
constexpr kelcore::uint32 kAudioDeviceDone = 4;

DocumentRecord QueryDocument(IQuerySession& session) {
    kelcore::int32 major = 0;
    kelcore::int32 minor = 0;
    session.GetFormatVersion(&major, &minor);
    return {FormatNumber(major) + u"." + FormatNumber(minor)};
}

}  // namespace

bool WriteDocument(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                   const std::u16string& path) {
    const bool versionSet =
        writer.SetRootAttributes(ToAttributes<kDocumentRows>(QueryDocument(*session)));
    const auto report = [&](kelcore::uint32 done) {
        session->SetProgress(done, kProgressTotal, 0, versionSet ? 1 : 0);
    };
    bool written = versionSet && WriteSession(writer, session);
    report(kSessionDone);
    written = written && WriteFiles(writer, session, path);
    report(kFilesDone);
    written = written && WriteAudioDevice(writer, session);
    report(kAudioDeviceDone);
    return written;
}

bool Serializer::Impl::Write(const std::u16string& path, HostReference<IQuerySession> session) {
    if (path.empty()) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, "cannot write: the path is empty");
        return false;
    }
    path_ = path;
    session->SetProgress(1, kProgressTotal, 0, 0);
    progressStep_ = 0;
    SessionXMLWriter writer(path_, writerFault_, makeDocument_);
    const auto held = writer.Hold();
    return WriteDocument(writer, session, path_) && writer.Save();
}

}  // namespace tses
