#include "toolkit/relink/MediaSearch.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>

#include <orvo/Collect.h>
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/media/MediaFile.h"
#include "toolkit/media/Sha256.h"
#include "toolkit/relink/PathNames.h"

namespace toolkit {
namespace {

using orvo::RelinkOutcome;

std::string FullPathOf(const std::string& path) {
    return kelcore::UTF16to8(kelcore::File(kelcore::UTF8to16(path)).FullPath());
}

/// Leaves one path of each file that has several.
void DropOtherLinks(std::vector<std::string>& paths) {
    std::vector<std::string> kept;
    for (std::string& path : paths) {
        const auto isSame = [&](const std::string& other) {
            std::error_code error;
            return std::filesystem::equivalent(path, other, error);
        };
        if (std::none_of(kept.begin(), kept.end(), isSame)) {
            kept.push_back(std::move(path));
        }
    }
    paths = std::move(kept);
}

std::vector<std::string> FromSystem(const std::vector<std::string>& paths) {
    std::vector<std::string> result;
    std::transform(paths.begin(), paths.end(), std::back_inserter(result), PathFromSystem);
    return result;
}

Whereabouts Found(const std::string& systemPath, std::string why) {
    return {.outcome = RelinkOutcome::Found,
            .path = PathFromSystem(systemPath),
            .why = std::move(why),
            .isByName = true};
}

Whereabouts Ambiguous(const std::vector<std::string>& systemPaths, std::string why) {
    return {.outcome = RelinkOutcome::Ambiguous,
            .why = std::move(why),
            .candidates = FromSystem(systemPaths)};
}

std::string FilesHaveThisName(std::size_t count) {
    return count == 1 ? "a file has this name" : fmt::format("{} files have this name", count);
}

}  // namespace

std::string PathFromSystem(const std::string& bytes) {
    return kelcore::UTF16to8(kelcore::PathFromBytes(bytes));
}

std::string PathToSystem(const std::string& path) {
    return kelcore::PathToBytes(kelcore::UTF8to16(path));
}

Whereabouts MediaSearch::Locate(const std::string& path, const MediaNeeds& needs) {
    if (path.empty()) {
        return {.why = "the session has no path for it"};
    }
    Whereabouts mapped = Mapped(path);
    if (mapped.outcome == RelinkOutcome::Found) {
        return mapped;
    }
    if (!index_.HasFolders()) {
        return {.why = mapped.why.empty() ? "its path begins with none that was mapped"
                                          : "it is not " + mapped.why};
    }
    Whereabouts found = InFolders(path, needs);
    if (found.outcome == RelinkOutcome::Missing && !mapped.why.empty()) {
        found.why += "; nor is it " + mapped.why;
    }
    return found;
}

Whereabouts MediaSearch::Mapped(const std::string& path) {
    Whereabouts result;
    for (const orvo::PathMapping& mapping : options_.mappings) {
        const auto behind = NamesBehind(path, mapping.from);
        if (!behind) {
            continue;
        }
        std::vector<std::string> names;
        std::filesystem::path mapped = PathToSystem(mapping.to);
        for (const std::string_view name : *behind) {
            names.push_back(PathToSystem(std::string(name)));
            mapped /= names.back();
        }
        const auto spelled = spellings_.Find(PathToSystem(mapping.to), names);
        if (spelled && IsMediaFile(PathFromSystem(*spelled))) {
            return {.outcome = RelinkOutcome::Found,
                    .path = FullPathOf(PathFromSystem(*spelled)),
                    .why = fmt::format("{} is now {}", mapping.from, mapping.to)};
        }
        if (result.why.empty()) {
            result.why = "at " + PathFromSystem(mapped.string());
        }
    }
    return result;
}

Whereabouts MediaSearch::InFolders(const std::string& path, const MediaNeeds& needs) {
    std::vector<std::string> named = index_.Find(PathToSystem(std::string(LastNameOf(path))));
    if (named.empty()) {
        return {.why = "no searched folder has a file of this name"};
    }
    DropOtherLinks(named);
    if (options_.match == orvo::MediaMatch::Hash && !needs.digest.empty()) {
        return OfKnownContent(named, needs.digest);
    }
    if (options_.match == orvo::MediaMatch::NameAndLength && needs.AnyOfSound()) {
        return OfFittingSound(path, named, needs);
    }
    return Choose(path, std::move(named));
}

Whereabouts MediaSearch::OfKnownContent(const std::vector<std::string>& named,
                                        const std::string& digest) {
    const auto fitting =
        std::find_if(named.begin(), named.end(),
                     [&](const std::string& candidate) { return DigestOf(candidate) == digest; });
    if (fitting != named.end()) {
        return Found(*fitting, fmt::format("has the content that {} states", orvo::kManifestName));
    }
    return {.why = fmt::format("{}, but not the content that {} states",
                               FilesHaveThisName(named.size()), orvo::kManifestName)};
}

Whereabouts MediaSearch::OfFittingSound(const std::string& path,
                                        const std::vector<std::string>& named,
                                        const MediaNeeds& needs) {
    std::vector<std::string> fitting;
    std::copy_if(named.begin(), named.end(), std::back_inserter(fitting),
                 [&](const std::string& candidate) { return Fits(candidate, needs); });
    if (fitting.empty()) {
        return {.why = FilesHaveThisName(named.size()) +
                       (named.size() == 1 ? ", but it has not" : ", but none has") +
                       " the length or the channels that the clips need"};
    }
    Whereabouts chosen = Choose(path, std::move(fitting));
    if (chosen.why.empty() && named.size() > 1) {
        chosen.why = fmt::format(
            "the only one of {} files of this name that has the length and "
            "the channels that the clips need",
            named.size());
    }
    return chosen;
}

Whereabouts MediaSearch::Choose(const std::string& path, std::vector<std::string> candidates) {
    if (candidates.size() == 1) {
        return Found(candidates.front(), "");
    }
    if (options_.match == orvo::MediaMatch::Hash) {
        return HaveSameContent(candidates)
                   ? Found(candidates.front(),
                           FilesHaveThisName(candidates.size()) + " and the same content")
                   : Ambiguous(candidates, FilesHaveThisName(candidates.size()) +
                                               ", and their contents differ");
    }
    std::vector<std::string> best;
    std::size_t mostShared = 0;
    for (const std::string& candidate : candidates) {
        const std::size_t shared = SharedFolders(path, PathFromSystem(candidate));
        if (shared > mostShared) {
            best.clear();
            mostShared = shared;
        }
        if (shared == mostShared) {
            best.push_back(candidate);
        }
    }
    if (best.size() == 1) {
        return Found(best.front(), fmt::format("of {} files of this name, the one with the most "
                                               "folders in common with the missing path",
                                               candidates.size()));
    }
    return Ambiguous(best, FilesHaveThisName(best.size()) +
                               (mostShared == 0 ? "" : ", in folders that fit equally well"));
}

bool MediaSearch::Fits(const std::string& candidate, const MediaNeeds& needs) {
    auto known = properties_.find(candidate);
    if (known == properties_.end()) {
        known = properties_.emplace(candidate, ReadMediaProperties(candidate)).first;
    }
    const auto* const properties = std::get_if<MediaProperties>(&known->second);
    return properties != nullptr && Fulfils(*properties, needs);
}

bool MediaSearch::HaveSameContent(const std::vector<std::string>& candidates) {
    std::error_code error;
    const auto size = std::filesystem::file_size(candidates.front(), error);
    const auto hasSameSize = [&](const std::string& candidate) {
        return !error && std::filesystem::file_size(candidate, error) == size && !error;
    };
    if (!std::all_of(candidates.begin(), candidates.end(), hasSameSize)) {
        return false;
    }
    const std::string& digest = DigestOf(candidates.front());
    return !digest.empty() &&
           std::all_of(candidates.begin() + 1, candidates.end(),
                       [&](const std::string& candidate) { return DigestOf(candidate) == digest; });
}

const std::string& MediaSearch::DigestOf(const std::string& candidate) {
    auto known = digests_.find(candidate);
    if (known == digests_.end()) {
        const auto digest = DigestOfFile(candidate);
        const auto* const text = std::get_if<std::string>(&digest);
        known = digests_.emplace(candidate, text != nullptr ? *text : std::string()).first;
    }
    return known->second;
}

}  // namespace toolkit
