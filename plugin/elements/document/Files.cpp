#include "plugin/elements/document/Writers.h"

#include "format/document/File.h"
#include "host/Files.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

// Reading

bool Exists(std::u16string_view path) {
    return kelcore::File(path).Exists();
}

/// Leaves the file's path in `absolutePath`. The relative path takes its place if the absolute path
/// is empty, or if only the relative path leads to a file. If neither does, the absolute path
/// stays, because it tells people what is missing.
/// @param resolvedPath  that of the session, resolved by name
void ChoosePath(FileRecord& record, const std::u16string& sessionPath,
                std::u16string_view resolvedPath) {
    // Usually both are the same path. Then it does not matter whether the file exists, and not
    // checking saves two system calls.
    if (kelcore::LeadsPlainlyTo(record.absolutePath, record.relativePath, resolvedPath)) {
        return;
    }
    const kelcore::File resolved(kelcore::MakeFileFromPath(record.relativePath, sessionPath));
    if (record.absolutePath.empty() || (!Exists(record.absolutePath) && resolved.Exists())) {
        record.absolutePath = resolved.FullPath();
    }
}

void Apply(const FileRecord& record, IEditFile& file) {
    file.SetPath(record.absolutePath.c_str());
    if (!record.mediaHandler.empty()) {
        file.SetMediaHandler(record.mediaHandler.c_str());
    }
    if (!record.recoveryId.empty()) {
        file.SetRecoveryId(record.recoveryId.c_str());
    }
    if (!record.importerPrivateSettings.empty()) {
        file.SetImporterPrivateSettings(record.importerPrivateSettings.c_str());
    }
}

}  // namespace

void Serializer::Impl::StartFile(State state, const TagAttributes& attributes) {
    PushState(state);
    auto record = ReadRecord<FileRecord, kFileRows>(attributes);
    if (!record.relativePath.empty()) {
        ChoosePath(record, path_, resolvedPath_);
    }
    if (const auto file = Retain(session_->GetFile(record.id))) {
        Apply(record, *file);
    }
}

// Writing

namespace {

FileRecord QueryFile(IQueryFile& file, const std::u16string& sessionPath) {
    FileRecord record;
    record.id = file.GetId();
    record.absolutePath = TextOf(file.GetPath());
    if (!record.absolutePath.empty()) {
        record.relativePath = kelcore::MakeNormalizedRelativePath(record.absolutePath, sessionPath);
    }
    record.mediaHandler = TextOf(file.GetMediaHandler());
    record.recoveryId = TextOf(file.GetRecoveryId());
    record.importerPrivateSettings = TextOf(file.GetImporterPrivateSettings());
    return record;
}

bool WriteFile(SessionXMLWriter& writer, IQueryFile& file, const std::u16string& sessionPath) {
    return writer.StartElement(names::file,
                               ToAttributes<kFileRows>(QueryFile(file, sessionPath))) &&
           writer.EndElement();
}

}  // namespace

bool WriteFiles(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                const std::u16string& path) {
    // Paths can be made relative only to an absolute path.
    const kelcore::File sessionFile(path);
    const auto writeFile = [&](kelcore::uint32 index) {
        const auto file = Retain(session->GetFile(index));
        return !file || WriteFile(writer, *file, sessionFile.FullPath());
    };
    return writer.StartElement(names::files) &&
           ForEachItem(writer, session->GetFileCount(), writeFile) && writer.EndElement();
}

}  // namespace tses
