#include "toolkit/interchange/dawproject/Restored.h"

#include <orvo/Json.h>

#include <utility>

#include "toolkit/interchange/dawproject/Entries.h"
#include "toolkit/media/Sha256.h"

namespace toolkit::interchange::dawproject {
namespace {

constexpr std::uint64_t kMostDigests = 4096;
constexpr std::uint64_t kMostJson = std::uint64_t{1} << 31;

std::string DigestOf(const Import& job, const ZipReader& zip, std::string_view entry) {
    Sha256 sum;
    if (zip.Find(entry) != nullptr) {
        zip.Read(entry, [&](std::string_view block) {
            job.Progress(0);
            sum.Add(block);
        });
    }
    return sum.Digest();
}

}  // namespace

std::optional<orvo::Session> ReadRestored(const Import& job, const ZipReader& zip) {
    if (zip.Find(kSessionEntry) == nullptr || zip.Find(kDigestsEntry) == nullptr) {
        return std::nullopt;
    }
    const std::string expected = zip.Read(kDigestsEntry, kMostDigests);
    const std::string found =
        DigestsText(DigestOf(job, zip, kProjectEntry), DigestOf(job, zip, kMetadataEntry));
    if (found != expected) {
        job.reporter.Warn("the file was changed since it was written",
                          "what only sessions hold is not in it any more");
        return std::nullopt;
    }
    orvo::ReadResult read = orvo::FromJson(zip.Read(kSessionEntry, kMostJson));
    if (!read) {
        job.reporter.Warn("the session that travels in the file is damaged",
                          "the rest of the file was read instead");
        return std::nullopt;
    }
    return std::move(read.session);
}

}  // namespace toolkit::interchange::dawproject
