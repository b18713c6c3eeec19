#include "cli/files/StandInFile.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "platform/kelcore/Paths.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

/// Errors that a different folder for temporary files may avoid.
constexpr int kErrorsOfPlace[] = {ENOSPC, EDQUOT, EACCES, EROFS, EFBIG, EPERM};

bool NamesErrorOfPlace(const std::string& message) {
    return std::ranges::any_of(kErrorsOfPlace, [&](int error) {
        return message.find(std::generic_category().message(error)) != message.npos;
    });
}

constexpr const char* kAdvice = "make room there, or set TMPDIR to another folder";

void MakeFolders(const fs::path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) {
        throw std::runtime_error("cannot create the temporary folder " + path.string() + ": " +
                                 error.message() + "; " + kAdvice);
    }
}

void MakeLink(const fs::path& target, const fs::path& link) {
    std::error_code error;
    fs::create_symlink(target, link, error);
    if (error) {
        throw std::runtime_error("cannot create the temporary link " + link.string() + ": " +
                                 error.message() +
                                 "; set TMPDIR to a folder in a file system that supports links");
    }
}

std::string Repeated(std::string_view text, std::ptrdiff_t count) {
    std::string all;
    for (; count > 0; --count) {
        all += text;
    }
    return all;
}

}  // namespace

StandInFile::StandInFile(const std::u16string& place) : place_(kelcore::PathToBytes(place)) {
    if (!place_.starts_with('/')) {
        place_.insert(0, "/");  // the working directory no longer exists
    }
    const std::string& root = folder_.Path();
    // One step for each name of the folder and one for the link.
    const std::ptrdiff_t steps = std::ranges::count(root, '/') + 1;
    // Any name except that of the file, which may be at the top.
    const std::string deep = "tree" + Repeated(place_.ends_with("/up") ? "/on" : "/up", steps);
    const std::string link = root + "/link";
    path_ = root + "/tree" + place_;
    pluginPath_ = kelcore::PathFromBytes(link + Repeated("/..", steps) + place_);
    MakeFolders(root + "/" + deep);
    MakeLink(deep, link);
    MakeFolders(fs::path(path_).parent_path());
}

std::string StandInFile::Place() const {
    return fs::path(folder_.Path()).parent_path().string();
}

std::filesystem::path StandInFile::FullName() const {
    return kelcore::PathToBytes(pluginPath_);
}

std::string StandInFile::Explain(std::string message) const {
    const std::size_t named = message.find(place_);
    if (named == std::string::npos || !NamesErrorOfPlace(message.substr(named + place_.size()))) {
        return message;
    }
    return message.replace(named, place_.size(), Place()) + "; " + kAdvice;
}

void StandInFile::FailToWrite(int systemError) const {
    const std::string reason = std::generic_category().message(systemError);
    throw std::runtime_error("cannot write \"" + Place() + "\": " + reason +
                             (NamesErrorOfPlace(reason) ? std::string("; ") + kAdvice : ""));
}

}  // namespace cli
