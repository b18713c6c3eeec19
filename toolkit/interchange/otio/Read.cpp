#include <fmt/format.h>

#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "toolkit/FileContent.h"
#include "toolkit/interchange/Extraction.h"
#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/otio/Archive.h"
#include "toolkit/interchange/otio/Otio.h"
#include "toolkit/interchange/otio/SessionBuilder.h"

namespace toolkit::interchange {
namespace otio {
namespace {

BuiltSession ReadText(std::string text, const Import& job) {
    const ParsedJson document = ParseDocument(std::move(text), job.file);
    const Node top = FindTop(Node(document, "", job.file), job.reporter);
    const std::uint32_t sampleRate = SampleRateOf(top, job);
    return BuildSession(Flatten(top, *Rate::Of(sampleRate), job), sampleRate, job);
}

void SetOffline(orvo::Session& session, std::uint32_t fileId) {
    const auto set = [&](auto& tracks) {
        for (auto& track : tracks) {
            for (auto& clip : track.clips) {
                clip.offline = clip.offline || clip.fileId == fileId;
            }
        }
    };
    set(session.audioTracks);
    set(session.videoTracks);
}

/// Writes the archive's media into the folder of the options, if there is one.
void ExtractMedia(BuiltSession& built, const ZipReader& zip, const Import& job) {
    Extraction extraction(job, zip);
    for (const RelativeMedia& media : built.media) {
        orvo::File& file = built.session.files[media.file];
        const auto place = ModelPath() / &orvo::Session::files / media.file;
        if (zip.Find(media.name) == nullptr || media.name.ends_with('/')) {
            job.reporter.Add(orvo::Fidelity::Lost, place, "the archive has no such entry",
                             media.name);
            SetOffline(built.session, file.id);
        } else if (job.options.mediaFolder.empty()) {
            job.reporter.Add(orvo::Fidelity::Lost, place,
                             "the media stay in the archive, so that their clips are offline",
                             media.name);
            SetOffline(built.session, file.id);
        } else {
            file.path = extraction.Extract(media.name);
        }
    }
    extraction.Keep();
}

}  // namespace
}  // namespace otio

orvo::Session ReadOtio(const Import& job) {
    auto content = ReadFileContent(job.file.string());
    if (const auto* const problem = std::get_if<Problem>(&content)) {
        throw Failure(
            {.file = job.file.string(), .what = problem->what, .advice = problem->advice});
    }
    return otio::ReadText(std::get<std::string>(std::move(content)), job).session;
}

orvo::Session ReadOtioz(const Import& job) {
    const ZipReader zip(job.file);
    std::string text = zip.Read(otio::kContentEntry, otio::DocumentLimits().bytes);
    otio::BuiltSession built = otio::ReadText(std::move(text), job);
    otio::ExtractMedia(built, zip, job);
    return std::move(built.session);
}

}  // namespace toolkit::interchange
