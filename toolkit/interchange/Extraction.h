#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/ZipArchive.h"

namespace toolkit::interchange {

/// Media that are written out of an archive, all of them or none.
class Extraction {
public:
    /// Both must outlive this object.
    Extraction(const Import& job, const ZipReader& zip) : job_(job), zip_(zip) {}

    /// Removes what was written, unless `Keep` was called.
    ~Extraction();
    Extraction(const Extraction&) = delete;
    Extraction& operator=(const Extraction&) = delete;

    /// Writes an entry into the media folder, under a name that is free.
    /// @return its full path
    /// @throws Failure, Cancelled
    std::string Extract(const std::string& entry);

    void Keep() { isKept_ = true; }

private:
    void MakeFolder();

    const Import& job_;
    const ZipReader& zip_;
    std::vector<std::filesystem::path> written_;
    bool madeFolder_ = false;
    bool isKept_ = false;
};

}  // namespace toolkit::interchange
