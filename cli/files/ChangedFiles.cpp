#include "cli/files/ChangedFiles.h"

#include <filesystem>
#include <map>

#include "cli/RemovalAtSignal.h"
#include "cli/files/Backup.h"
#include "cli/files/NamedFiles.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/Stream.h"
#include "platform/kelcore/Paths.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

std::string NameIn(const std::string& folder, const std::string& file) {
    return (fs::path(folder) / fs::path(file).filename()).string();
}

}  // namespace

std::optional<std::vector<std::string>> FindTargets(const std::vector<std::string>& files,
                                                    const std::string& out) {
    if (out.empty()) {
        return files;
    }
    if (const auto stream = FindStream(out, Direction::Out)) {
        Complain({.subject = stream->name,
                  .what = "a changed session is not saved to a stream",
                  .advice = "name a file or a folder"});
        return std::nullopt;
    }
    const bool isFolder = IsFolder(out);
    if (!isFolder && files.size() > 1) {
        Complain({.subject = out,
                  .what = "this is not a folder, and several sessions are to be saved there",
                  .advice = "make the folder, or name one session"});
        return std::nullopt;
    }
    std::vector<std::string> targets;
    std::map<std::string, std::string> taken;
    for (const std::string& file : files) {
        targets.push_back(isFolder ? NameIn(out, file) : out);
        const auto [other, isFree] = taken.emplace(targets.back(), file);
        if (!isFree) {
            Complain({.subject = file,
                      .what = "would be saved to " + targets.back() + ", as would " + other->second,
                      .advice = "name them in two calls, with a folder for each"});
            return std::nullopt;
        }
    }
    return targets;
}

SavedFile SaveChanged(const Output& target, bool keepsBackup,
                      const std::function<orvo::WriteResult(const std::string& path)>& save) {
    const std::string path = kelcore::PathToBytes(target.FullPath());
    const WithoutSignals untilSaved;
    SavedFile result;
    std::optional<Backup> backup;
    if (keepsBackup) {
        backup.emplace(path);
        if (backup->Failure()) {
            result.messages.push_back(ToMessage(target.Name(), *backup->Failure()));
            return result;
        }
    }
    const orvo::WriteResult written = save(path);
    for (const orvo::Message& message : written.messages) {
        result.messages.push_back(
            {.subject = target.Name(),
             .what = "was not saved",
             .advice = message.what + (message.advice.empty() ? "" : "; " + message.advice)});
    }
    result.ok = written.ok;
    if (written && backup) {
        result.backup = backup->Keep();
    }
    return result;
}

}  // namespace cli
