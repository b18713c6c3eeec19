#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

#include <orvo/Interchange.h>
#include "fuzz/PluginUnderTest.h"

// Feeds arbitrary bytes to the readers of OpenTimelineIO, as a text or, if they begin as one, as an
// archive. They must refuse them with a message, or produce a session that survives a trip.

namespace {

using orvo::InterchangeKind;

/// A folder of this process.
class Folder {
public:
    Folder()
        : path_(std::filesystem::temp_directory_path() /
                ("orvo-otio-fuzzer-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(path_);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::filesystem::path operator/(const char* name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

orvo::ImportResult Read(const std::filesystem::path& file, InterchangeKind kind) {
    orvo::ImportResult result = orvo::ImportSession(file, kind);
    if (!result && (result.messages.empty() || result.messages[0].what.empty())) {
        fuzz::Fail("refused without a message");
    }
    return result;
}

/// Start, end and place in the media of all audio clips.
std::vector<std::vector<std::int64_t>> PlacementsOf(const orvo::Session& session) {
    std::vector<std::vector<std::int64_t>> placements;
    for (const orvo::AudioTrack& track : session.audioTracks) {
        for (const orvo::AudioClip& clip : track.clips) {
            placements.push_back({clip.startPoint, clip.duration, clip.sourceInPoint});
        }
    }
    std::ranges::sort(placements);
    return placements;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const std::filesystem::path file = folder / "in";
    std::ofstream(file, std::ios::binary) << content;
    const orvo::ImportResult read =
        Read(file, content.starts_with("PK") ? InterchangeKind::Otioz : InterchangeKind::Otio);
    if (read) {
        const std::filesystem::path trip = folder / "trip";
        if (!orvo::ExportSession(read.session, InterchangeKind::Otio, trip)) {
            fuzz::Fail("what was read cannot be written");
        }
        const orvo::ImportResult again = Read(trip, InterchangeKind::Otio);
        if (!again || PlacementsOf(again.session) != PlacementsOf(read.session)) {
            fuzz::Fail("clips moved on a trip");
        }
    }
    return 0;
}
