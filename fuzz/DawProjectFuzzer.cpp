#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include <orvo/Interchange.h>
#include <orvo/Json.h>
#include "fuzz/PluginUnderTest.h"
#include "tests/support/TemporaryFolder.h"
#include "toolkit/interchange/OutputFile.h"
#include "toolkit/interchange/ZipArchive.h"

// Feeds arbitrary bytes to the reader of DAWproject files: as the document in an archive, or, if
// they begin like an archive, as the archive itself. It must refuse them with a message, or produce
// a session that can be written and read again.

namespace {

namespace interchange = toolkit::interchange;
using orvo::InterchangeKind;

void WriteArchive(const std::filesystem::path& file, std::string_view project) {
    interchange::Outputs outputs;
    interchange::ZipWriter zip(outputs.Add(file));
    zip.Add("project.xml", project);
    zip.Add("plugins/a.bin", "state");
    zip.Add("audio/a.wav", "sound");
    zip.Finish();
    outputs.Commit();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto folder = test::TemporaryFolder::InMemory();
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::filesystem::path file = folder / "a.dawproject";
    if (bytes.starts_with("PK")) {
        folder.Write("a.dawproject", bytes);
    } else {
        WriteArchive(file, bytes);
    }
    const orvo::ImportResult read = orvo::ImportSession(file, InterchangeKind::DawProject);
    if (!read) {
        if (read.messages.empty() || read.messages[0].what.empty()) {
            fuzz::Fail("refused without a message");
        }
        return 0;
    }
    const orvo::ExportResult written =
        orvo::ExportSession(read.session, InterchangeKind::DawProject, folder / "b.dawproject");
    if (!written) {
        fuzz::Fail("a session that was read cannot be written");
    }
    const orvo::ImportResult again =
        orvo::ImportSession(folder / "b.dawproject", InterchangeKind::DawProject);
    if (!again || orvo::ToJson(again.session) != orvo::ToJson(read.session)) {
        fuzz::Fail("a session changed on its way through a file");
    }
    return 0;
}
