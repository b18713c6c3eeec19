#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "toolkit/interchange/dawproject/ProjectDocument.h"

namespace toolkit::interchange::dawproject {

/// The media that the clips of a document play.
class MediaReader {
public:
    /// @param hasEntry  whether the archive has an entry
    MediaReader(const ProjectDocument& document, std::function<bool(const std::string&)> hasEntry,
                orvo::Session& session)
        : document_(document), hasEntry_(std::move(hasEntry)), session_(session) {}

    /// The id of the file that an element "Audio" or "Video" plays, which is added to the session
    /// if it is new; `kNoId` if the element names none.
    std::uint32_t FileIdOf(const pugi::xml_node& media);

    /// A file of the session that is an entry of the archive.
    struct Inside {
        std::size_t file = 0;  ///< in `Session::files`
        std::string entry{};
    };

    const std::vector<Inside>& FilesInside() const { return inside_; }

    /// Whether clips of this file have no media: it stays in the archive.
    bool IsOffline(std::uint32_t fileId) const;

private:
    std::string PathOf(const pugi::xml_node& file) const;
    std::filesystem::path AbsoluteFile() const;

    const ProjectDocument& document_;
    std::function<bool(const std::string&)> hasEntry_;
    orvo::Session& session_;
    std::unordered_map<std::string, std::uint32_t> ids_;
    std::vector<Inside> inside_;
};

}  // namespace toolkit::interchange::dawproject
