#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Draw.h>
#include "toolkit/FileContent.h"

namespace toolkit {

/// Peaks of whole sound files, kept in a folder: a file for each, named for the sound's path. It
/// begins with what it is of, and ends with a checksum.
class PeakCache {
public:
    /// @param folder  need not exist
    explicit PeakCache(std::string folder) : folder_(std::move(folder)) {}

    /// @return none unless the peaks are those of the file as it is now, at that resolution
    std::optional<std::vector<orvo::Peak>> Find(const std::string& path, const FileIdentity& state,
                                                std::uint32_t framesPerPeak) const;

    /// Nothing is kept if that fails.
    void Keep(const std::string& path, const FileIdentity& state, std::uint32_t framesPerPeak,
              const std::vector<orvo::Peak>& peaks) const;

private:
    std::string PlaceOf(const std::string& path) const;

    std::string folder_;
};

}  // namespace toolkit
