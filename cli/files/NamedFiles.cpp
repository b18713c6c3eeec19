#include "cli/files/NamedFiles.h"

#include <filesystem>
#include <system_error>

#include "cli/files/SessionFile.h"
#include "cli/terminal/Messages.h"
#include "cli/terminal/Stream.h"
#include "toolkit/SessionFolder.h"

namespace cli {
namespace {

void AddFolder(const std::string& folder, NamedFiles& named) {
    const toolkit::FolderContent content = toolkit::FindSessions(folder);
    for (const toolkit::UnreadFolder& unread : content.unread) {
        Complain(ToMessage(unread.path, unread.problem));
    }
    if (content.sessions.empty() && content.unread.empty()) {
        Complain({.subject = folder,
                  .what = "this folder contains no session files",
                  .advice = "their names end in .orvo"});
    }
    named.allKnown = named.allKnown && content.unread.empty() && !content.sessions.empty();
    named.files.insert(named.files.end(), content.sessions.begin(), content.sessions.end());
}

}  // namespace

bool IsFolder(const std::string& name) {
    std::error_code error;
    return name != kStream && std::filesystem::is_directory(name, error);
}

NamedFiles FindFiles(const std::vector<std::string>& names, bool recursive) {
    NamedFiles named;
    for (const std::string& name : names) {
        if (recursive && IsFolder(name)) {
            AddFolder(name, named);
        } else {
            named.files.push_back(name);
        }
    }
    return named;
}

}  // namespace cli
