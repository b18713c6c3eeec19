#include "toolkit/interchange/dawproject/MediaPlan.h"

#include <algorithm>
#include <set>

#include "toolkit/ModelPath.h"
#include "toolkit/interchange/dawproject/Entries.h"

namespace toolkit::interchange::dawproject {

using orvo::Fidelity;

MediaPlan::MediaPlan(const Export& job)
    : job_(job),
      entries_(job.options.embedMedia ? MediaEntriesOf(job.session)
                                      : std::map<std::uint32_t, std::string>()) {
    for (const orvo::File& file : job.session.files) {
        paths_.emplace(file.id, &file.path);
    }
}

const WrittenMedia& MediaPlan::Use(std::uint32_t fileId) {
    const auto [used, isNew] = used_.try_emplace(fileId);
    WrittenMedia& media = used->second;
    if (!isNew) {
        return media;
    }
    media.fact = job_.media.Of(fileId);
    if (const auto path = paths_.find(fileId); path != paths_.end()) {
        media.path = *path->second;
    }
    if (const auto entry = entries_.find(fileId); entry != entries_.end() && media.fact.exists) {
        media.path = entry->second;
        media.isExternal = false;
    }
    return media;
}

const WrittenMedia& MediaPlan::UseSound(std::uint32_t fileId) {
    const WrittenMedia& media = Use(fileId);
    ++rates_[media.fact.sampleRate];
    return media;
}

std::uint32_t MediaPlan::UsualRate() const {
    const auto usual =
        std::ranges::max_element(rates_, {}, [](const auto& rate) { return rate.second; });
    return usual != rates_.end() ? usual->first : 0;
}

std::vector<EmbeddedMedia> MediaPlan::Embedded() const {
    std::vector<EmbeddedMedia> embedded;
    for (const auto& [fileId, media] : used_) {
        if (!media.isExternal) {
            embedded.push_back({.path = *paths_.at(fileId), .entry = media.path});
        }
    }
    return embedded;
}

void MediaPlan::Report() const {
    std::set<std::string> paths;
    for (std::size_t i = 0; i < job_.session.files.size(); ++i) {
        const orvo::File& file = job_.session.files[i];
        const ModelPath place = ModelPath() / &orvo::Session::files / i;
        const auto used = used_.find(file.id);
        if (used == used_.end()) {
            job_.reporter.Add(Fidelity::Lost, place, "no clip plays the file", file.path);
            continue;
        }
        if (!paths.insert(file.path).second) {
            job_.reporter.Add(Fidelity::Approximated, place, "two files of one path become one",
                              file.path);
        }
        if (job_.options.embedMedia && used->second.isExternal) {
            job_.reporter.Add(Fidelity::Lost, place, "the file is missing and was not embedded",
                              file.path);
        }
    }
}

}  // namespace toolkit::interchange::dawproject
