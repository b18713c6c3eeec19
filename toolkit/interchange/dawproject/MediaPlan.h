#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "toolkit/interchange/Format.h"

namespace toolkit::interchange::dawproject {

/// What the document says of a media file.
struct WrittenMedia {
    std::string path{};
    bool isExternal = true;
    MediaFact fact{};
};

/// A media file that becomes an entry.
struct EmbeddedMedia {
    std::string path{};
    std::string entry{};
};

/// The media of a session, and which of them are used.
class MediaPlan {
public:
    explicit MediaPlan(const Export& job);

    /// What a clip plays; an empty path if the session has no such file.
    const WrittenMedia& Use(std::uint32_t fileId);

    /// Likewise, and counts its rate.
    const WrittenMedia& UseSound(std::uint32_t fileId);

    /// The rate of the media of most clips with sound; 0 without any. Of rates that are as usual,
    /// the lowest one.
    std::uint32_t UsualRate() const;

    /// The media to embed, after all clips are written.
    std::vector<EmbeddedMedia> Embedded() const;

    /// Reports files that no clip plays, and such as lead to the same path.
    void Report() const;

private:
    const Export& job_;
    std::map<std::uint32_t, std::string> entries_;
    std::unordered_map<std::uint32_t, const std::string*> paths_;
    std::map<std::uint32_t, WrittenMedia> used_;  // also what the session has no file for
    std::map<std::uint32_t, std::size_t> rates_;
};

}  // namespace toolkit::interchange::dawproject
