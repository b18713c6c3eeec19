#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/interchange/otio/MediaUrl.h"
#include "toolkit/interchange/otio/SessionBuilder.h"

namespace toolkit::interchange::otio {

/// The files of a session that is read, by the URLs of its clips.
class MediaFiles {
public:
    /// @param folder  what relative URLs count from
    MediaFiles(orvo::Session& session, std::filesystem::path folder)
        : session_(session), folder_(std::move(folder)) {
        for (std::size_t i = 0; i < session.files.size(); ++i) {
            places_.try_emplace(session.files[i].id, i);
            byUrl_.try_emplace(UrlOf(session.files[i].path), session.files[i].id);
        }
    }

    /// The file of a clip. One that `metadata.orvo` names gets the URL's path if it has another.
    /// @param own  as `metadata.orvo` has it
    std::uint32_t Of(const std::string& url, std::uint32_t own) {
        const auto place = places_.find(own);
        const bool isKnown = place != places_.end();
        if (url.empty()) {
            return isKnown && !session_.files[place->second].path.empty() ? orvo::kNoId : own;
        }
        if (isKnown && (UrlOf(session_.files[place->second].path) == url || Urls(own) == url)) {
            return own;
        }
        if (isKnown && Urls(own).empty()) {
            Assign(place->second, url);
            return own;
        }
        const auto known = byUrl_.find(url);
        return known != byUrl_.end() ? known->second : Add(url);
    }

    std::vector<RelativeMedia> TakeRelative() { return std::move(relative_); }

private:
    std::string Urls(std::uint32_t id) const {
        const auto url = assigned_.find(id);
        return url != assigned_.end() ? url->second : std::string();
    }

    std::uint32_t Add(const std::string& url) {
        while (places_.contains(nextId_)) {
            ++nextId_;
        }
        places_.emplace(nextId_, session_.files.size());
        session_.files.push_back({.id = nextId_});
        Assign(session_.files.size() - 1, url);
        return nextId_;
    }

    void Assign(std::size_t place, const std::string& url) {
        orvo::File& file = session_.files[place];
        assigned_.emplace(file.id, url);
        byUrl_.try_emplace(url, file.id);
        const bool isRelative = url[0] != '/' && url.find(':') == url.npos;
        if (isRelative) {
            relative_.push_back({.file = place, .name = PathOf(url, "/").value_or("/").substr(1)});
        }
        file.path = PathOf(url, folder_).value_or("");
    }

    orvo::Session& session_;
    std::filesystem::path folder_;
    std::unordered_map<std::uint32_t, std::size_t> places_;
    std::unordered_map<std::uint32_t, std::string> assigned_;
    std::unordered_map<std::string, std::uint32_t> byUrl_;
    std::vector<RelativeMedia> relative_;
    std::uint32_t nextId_ = 1;
};

}  // namespace toolkit::interchange::otio
