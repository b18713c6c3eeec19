#pragma once

#include <optional>
#include <string>

#include "toolkit/DocumentScan.h"

namespace cli {

/// The old content of a file that is about to be replaced, under another name beside it:
/// "song.orvo.bak", or "song.orvo.bak2" and so on if that exists. Removed at the end unless it is
/// kept.
class Backup {
public:
    /// Makes a hard link, or a copy if the file system has no links.
    explicit Backup(const std::string& file);
    ~Backup();
    Backup(const Backup&) = delete;
    Backup& operator=(const Backup&) = delete;

    /// Why there is no backup.
    const std::optional<toolkit::Problem>& Failure() const { return failure_; }

    /// @returns its path
    const std::string& Keep();

private:
    std::string path_;  // empty if there is none
    std::optional<toolkit::Problem> failure_;
    bool isKept_ = false;
};

}  // namespace cli
