#include "plugin/elements/document/Document.h"

#include "platform/kelcore/Trace.h"
#include "plugin/elements/document/Files.h"
#include "plugin/elements/document/Session.h"
#include "plugin/elements/tracks/AudioDevice.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/serializer/ValueEncoding.h"

// The root:
//
//     <orvo version="1.5"> <session/> <files/> <audioDevice/> </orvo>
//
// "version" is written and never read: what a file means is told by its elements alone. Reading
// accepts the root in the dispatch itself.

namespace tses {
namespace {

constexpr kelcore::uint32 kSessionDone = 2;
constexpr kelcore::uint32 kFilesDone = 3;
constexpr kelcore::uint32 kAudioDeviceDone = 4;

AttributeMap ToAttributes(const DocumentVersion& version) {
    return {{names::version, FormatSigned(version.major) + u"." + FormatSigned(version.minor)}};
}

}  // namespace

bool WriteDocument(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                   const std::u16string& path) {
    DocumentVersion version;
    session->GetFormatVersion(&version.major, &version.minor);
    const bool versionSet = writer.SetRootAttributes(ToAttributes(version));
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
    SessionXMLWriter writer(path_, writerFault_, makeNodes_);
    return WriteDocument(writer, session, path_) && writer.Save();
}

}  // namespace tses
