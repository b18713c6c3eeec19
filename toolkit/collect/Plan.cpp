#include <orvo/Collect.h>

#include <sys/stat.h>

#include <algorithm>
#include <system_error>
#include <unordered_map>
#include <utility>

#include <orvo/Lookup.h>
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/collect/PortableNames.h"
#include "toolkit/media/Presence.h"

namespace orvo {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMediaFolder = "media/";

std::string ToSystem(const std::string& path) {
    return kelcore::PathToBytes(kelcore::UTF8to16(path));
}

fs::path FullPathOf(const fs::path& path) {
    return kelcore::PathToBytes(kelcore::File(kelcore::PathFromBytes(path.string())).FullPath());
}

class Planner {
public:
    Planner(CollectPlan& plan, const CollectOptions& options) : plan_(plan), options_(options) {
        std::error_code error;
        existing_ = fs::exists(plan.folder, error) ? plan.folder : plan.folder.parent_path();
    }

    void Run() {
        const ReadResult read = ReadSession(plan_.session);
        if (!read) {
            plan_.messages = read.messages;
            return;
        }
        std::error_code error;
        if (!fs::is_directory(existing_, error)) {
            plan_.messages.push_back({.file = existing_.string(),
                                      .what = "is not a folder",
                                      .advice = "make it, or choose another one"});
            return;
        }
        NameSession();
        std::vector<std::string> paths;
        for (const File& file : read.session.files) {
            paths.push_back(file.path);
        }
        const std::vector<toolkit::Presence> presence = toolkit::FindPresence(paths);
        for (std::size_t i = 0; i < paths.size(); ++i) {
            Add(read.session.files[i], presence[i]);
        }
        RemarkOnPreRendered(read.session);
        const fs::space_info space = fs::space(existing_, error);
        if (!error) {
            plan_.bytesFree = space.available;
        }
        plan_.ok = true;
    }

private:
    void NameSession() {
        plan_.sessionName = toolkit::PortableName(plan_.session.filename().string());
        if (plan_.sessionName == kManifestName) {
            plan_.sessionName += "_";
        }
    }

    void Add(const File& file, toolkit::Presence presence) {
        const auto [known, isNew] = places_.try_emplace(file.path, plan_.media.size());
        if (!isNew) {
            plan_.media[known->second].ids.push_back(file.id);
            return;
        }
        CollectedFile media{.ids = {file.id}, .source = file.path};
        struct stat status {};
        if (presence == toolkit::Presence::Silent) {
            plan_.messages.push_back({.severity = Severity::Warning,
                                      .file = file.path,
                                      .what = "its folder does not answer",
                                      .advice = "try again when it does"});
        }
        if (presence == toolkit::Presence::Present &&
            ::stat(ToSystem(file.path).c_str(), &status) == 0) {
            const std::string name = fs::path(ToSystem(file.path)).filename().string();
            media.name = kMediaFolder + names_.Take(toolkit::PortableName(name));
            media.size = static_cast<std::uint64_t>(status.st_size);
            struct stat there {};
            media.exists = ::lstat((plan_.folder / media.name).c_str(), &there) == 0;
            plan_.bytes += media.size;
            plan_.bytesToCopy += media.exists || CanLink(status) ? 0 : media.size;
        }
        plan_.media.push_back(std::move(media));
    }

    bool CanLink(const struct stat& source) const {
        struct stat folder {};
        return options_.link && ::stat(existing_.c_str(), &folder) == 0 &&
               folder.st_dev == source.st_dev;
    }

    void RemarkOnPreRendered(const Session& session) {
        ForEachAudioTrack(session, [this](const AudioTrack& track) {
            if (track.preRendered && !track.preRenderedFile.empty()) {
                plan_.messages.push_back(
                    {.severity = Severity::Warning,
                     .file = plan_.session.string(),
                     .what = "the track \"" + track.name + "\" plays a pre-rendered file, " +
                             track.preRenderedFile + ", which is not collected",
                     .advice = "pre-render it again from the collected session"});
            }
        });
    }

    CollectPlan& plan_;
    const CollectOptions& options_;
    fs::path existing_;  // the folder, or the one around it
    toolkit::UniqueNames names_;
    std::unordered_map<std::string, std::size_t> places_;  // in the plan's media, by path
};

}  // namespace

std::size_t CollectPlan::MissingCount() const {
    return static_cast<std::size_t>(std::count_if(
        media.begin(), media.end(), [](const CollectedFile& one) { return one.name.empty(); }));
}

CollectPlan PlanCollection(const fs::path& session, const fs::path& folder,
                           const CollectOptions& options) {
    CollectPlan plan;
    plan.session = session;
    plan.folder = FullPathOf(folder);
    Planner(plan, options).Run();
    return plan;
}

}  // namespace orvo
