#include <orvo/Relink.h>

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <variant>

#include <orvo/Collect.h>
#include <orvo/Session.h>
#include "toolkit/FileContent.h"
#include "toolkit/media/Manifest.h"
#include "toolkit/media/Presence.h"
#include "toolkit/relink/MediaNeeds.h"
#include "toolkit/relink/MediaPathEdits.h"
#include "toolkit/relink/MediaSearch.h"
#include "toolkit/relink/PathNames.h"

namespace orvo {
namespace {

using toolkit::MediaSearch;

constexpr const char* kSilent = "its folder does not answer; try again when it does";
constexpr const char* kTaken = "the only file of this name is the session's file {} already";
constexpr const char* kShared =
    "one file has this name, and {} missing files of the session have it";

/// Digests of files, by their names in a folder.
using Digests = std::unordered_map<std::string, std::string>;

/// What the manifest beside a session states; nothing if there is none.
Digests DigestsBeside(const std::filesystem::path& session) {
    const auto content = toolkit::ReadFileContent((session.parent_path() / kManifestName).string());
    const auto* const text = std::get_if<std::string>(&content);
    const auto manifest = text != nullptr ? toolkit::ParseManifest(*text) : std::nullopt;
    return manifest ? Digests(manifest->begin(), manifest->end()) : Digests();
}

/// The digest of the file whose name the path ends with; empty if there is none.
std::string DigestOf(const std::string& path, const Digests& digests) {
    const auto names = toolkit::NamesOf(path).names;
    std::string end;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        end.insert(0, end.empty() ? "" : "/").insert(0, *name);
        if (const auto found = digests.find(end); found != digests.end()) {
            return found->second;
        }
    }
    return {};
}

/// Media, and which of them were found by name.
class Findings {
public:
    Findings(const Session& session, const Digests& digests, MediaSearch& search) {
        const auto needs = toolkit::FindMediaNeeds(session);
        std::vector<std::string> paths;
        for (const File& file : session.files) {
            paths.push_back(file.path);
        }
        const std::vector<toolkit::Presence> presence = toolkit::FindPresence(paths);
        for (std::size_t i = 0; i < paths.size(); ++i) {
            const File& file = session.files[i];
            const auto found = needs.find(file.id);
            toolkit::MediaNeeds needed =
                found != needs.end() ? found->second : toolkit::MediaNeeds();
            needed.digest = DigestOf(file.path, digests);
            Add(file, presence[i], needed, search);
        }
        RefuseSharedFiles();
    }

    std::vector<RelinkedMedia> Media() && { return std::move(media_); }

private:
    void Add(const File& file, toolkit::Presence presence, const toolkit::MediaNeeds& needs,
             MediaSearch& search) {
        RelinkedMedia media{.id = file.id, .path = file.path};
        if (presence == toolkit::Presence::Present) {
            media.outcome = RelinkOutcome::Present;
            present_.emplace(file.path, file.id);
        } else if (presence == toolkit::Presence::Silent) {
            media.why = kSilent;
        } else {
            toolkit::Whereabouts found = search.Locate(file.path, needs);
            media.outcome = found.outcome;
            media.newPath = std::move(found.path);
            media.why = std::move(found.why);
            media.candidates = std::move(found.candidates);
            if (found.isByName) {
                byName_[media.newPath].push_back(media_.size());
            }
        }
        media_.push_back(std::move(media));
    }

    /// Two missing files of one name were two files once, so that one file cannot be both.
    void RefuseSharedFiles() {
        for (const auto& [path, claimants] : byName_) {
            std::set<std::string> paths;
            for (const std::size_t claimant : claimants) {
                paths.insert(media_[claimant].path);
            }
            if (const auto taken = present_.find(path); taken != present_.end()) {
                Refuse(claimants, fmt::format(kTaken, taken->second));
            } else if (paths.size() > 1) {
                Refuse(AllButBest(path, claimants), fmt::format(kShared, paths.size()));
            }
        }
    }

    /// The claimants but the one whose folders are most alike those of the file, if there is one.
    std::vector<std::size_t> AllButBest(const std::string& path,
                                        const std::vector<std::size_t>& claimants) const {
        std::map<std::size_t, std::set<std::string>> pathsByShared;
        const auto sharedBy = [&](std::size_t claimant) {
            return toolkit::SharedFolders(media_[claimant].path, path);
        };
        for (const std::size_t claimant : claimants) {
            pathsByShared[sharedBy(claimant)].insert(media_[claimant].path);
        }
        const auto& [mostShared, bestPaths] = *pathsByShared.rbegin();
        std::vector<std::size_t> others;
        for (const std::size_t claimant : claimants) {
            if (bestPaths.size() > 1 || sharedBy(claimant) != mostShared) {
                others.push_back(claimant);
            }
        }
        return others;
    }

    void Refuse(const std::vector<std::size_t>& claimants, const std::string& why) {
        for (const std::size_t claimant : claimants) {
            RelinkedMedia& media = media_[claimant];
            media.outcome = RelinkOutcome::Ambiguous;
            media.candidates = {std::move(media.newPath)};
            media.newPath.clear();
            media.why = why;
        }
    }

    std::vector<RelinkedMedia> media_;
    std::unordered_map<std::string, std::uint32_t> present_;  // id by path
    std::map<std::string, std::vector<std::size_t>> byName_;  // media by the path found for them
};

bool IsSameFolder(const std::filesystem::path& one, const std::filesystem::path& other) {
    const auto folderOf = [](const std::filesystem::path& file) {
        std::error_code error;
        return std::filesystem::absolute(file, error).lexically_normal().parent_path();
    };
    return folderOf(one) == folderOf(other);
}

/// Writes the new paths. A found file whose path a session file cannot carry stays missing.
void SetPaths(RelinkResult& result, const std::filesystem::path& session,
              const std::filesystem::path& target) {
    const bool isMoved = !IsSameFolder(session, target);
    std::unordered_map<std::uint32_t, std::string> places;
    for (const RelinkedMedia& media : result.media) {
        if (media.outcome == RelinkOutcome::Found) {
            places[media.id] = media.newPath;
        } else if (media.outcome == RelinkOutcome::Present && isMoved) {
            places[media.id] = media.path;
        }
    }
    const auto placeOf = [&](std::uint32_t id) {
        const auto place = places.find(id);
        return place != places.end() ? std::optional(place->second) : std::nullopt;
    };
    const auto refuse = [&](std::uint32_t id, const Message& why) {
        for (RelinkedMedia& media : result.media) {
            if (media.id == id && media.outcome == RelinkOutcome::Found) {
                media.outcome = RelinkOutcome::Missing;
                media.why = fmt::format("found at {}, but {}", media.newPath, why.what);
                media.newPath.clear();
            }
        }
    };
    toolkit::SetMediaPaths(*result.edit, session, target, placeOf, refuse);
}

}  // namespace

std::size_t RelinkResult::Count(RelinkOutcome outcome) const {
    return static_cast<std::size_t>(
        std::count_if(media.begin(), media.end(),
                      [outcome](const RelinkedMedia& one) { return one.outcome == outcome; }));
}

class Relinker::Implementation : public MediaSearch {
public:
    using MediaSearch::MediaSearch;
};

Relinker::Relinker(RelinkOptions options)
    : implementation_(std::make_unique<Implementation>(std::move(options))) {}
Relinker::Relinker(Relinker&&) noexcept = default;
Relinker& Relinker::operator=(Relinker&&) noexcept = default;
Relinker::~Relinker() = default;

Relinker::SearchResult Relinker::Search(const std::filesystem::path& folder,
                                        const SearchProgress& progress) {
    const toolkit::MediaIndex::Added added = implementation_->Index().Add(folder, progress);
    SearchResult result;
    result.cancelled = added.cancelled;
    for (const toolkit::UnreadFolder& unread : added.unread) {
        result.messages.push_back({.severity = Severity::Warning,
                                   .file = unread.path,
                                   .what = unread.problem.what,
                                   .advice = unread.problem.advice});
    }
    result.ok = !added.cancelled && added.isRead;
    return result;
}

std::uint64_t Relinker::FileCount() const {
    return implementation_->Index().FileCount();
}

RelinkResult Relinker::Relink(const std::filesystem::path& session,
                              const std::filesystem::path& target) {
    RelinkResult result;
    {
        const ReadResult read = ReadSession(session);
        if (!read) {
            result.messages = read.messages;
            return result;
        }
        result.media = Findings(read.session, DigestsBeside(session), *implementation_).Media();
    }
    if (result.Count(RelinkOutcome::Found) != 0 || !IsSameFolder(session, target)) {
        EditResult opened = OpenEdit(session);
        if (!opened) {
            result.messages = std::move(opened.messages);
            return result;
        }
        result.edit = std::move(opened.edit);
        SetPaths(result, session, target);
        if (result.edit->Replacements().empty()) {
            result.edit.reset();
        }
    }
    result.ok = true;
    return result;
}

}  // namespace orvo
