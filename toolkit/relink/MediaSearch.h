#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include <orvo/Relink.h>
#include "toolkit/media/FolderSpellings.h"
#include "toolkit/media/MediaIndex.h"
#include "toolkit/media/MediaProperties.h"
#include "toolkit/relink/MediaNeeds.h"

namespace toolkit {

/// A path in UTF-8 as a session states it, from and to the bytes that system calls take.
std::string PathFromSystem(const std::string& bytes);
std::string PathToSystem(const std::string& path);

/// Where a missing file may be.
struct Whereabouts {
    orvo::RelinkOutcome outcome = orvo::RelinkOutcome::Missing;
    std::string path{};  ///< if found
    std::string why{};
    std::vector<std::string> candidates{};  ///< if ambiguous
    bool isByName = false;                  ///< found in the searched folders, not by a mapping
};

/// Looks for missing files, and remembers what it learnt of the files that it looked into.
class MediaSearch {
public:
    explicit MediaSearch(orvo::RelinkOptions options) : options_(std::move(options)) {}

    MediaIndex& Index() { return index_; }

    Whereabouts Locate(const std::string& path, const MediaNeeds& needs);

private:
    Whereabouts Mapped(const std::string& path);
    Whereabouts InFolders(const std::string& path, const MediaNeeds& needs);
    Whereabouts OfKnownContent(const std::vector<std::string>& named, const std::string& digest);
    Whereabouts OfFittingSound(const std::string& path, const std::vector<std::string>& named,
                               const MediaNeeds& needs);
    Whereabouts Choose(const std::string& path, std::vector<std::string> candidates);
    bool Fits(const std::string& candidate, const MediaNeeds& needs);
    bool HaveSameContent(const std::vector<std::string>& candidates);
    const std::string& DigestOf(const std::string& candidate);

    orvo::RelinkOptions options_;
    MediaIndex index_;
    FolderSpellings spellings_;
    std::unordered_map<std::string, MediaResult> properties_;
    std::unordered_map<std::string, std::string> digests_;  // empty for an unreadable file
};

}  // namespace toolkit
