#include "tests/trust/saving/SavingScenarios.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "tests/trust/saving/Saving.h"

namespace test {
namespace {

constexpr uid_t kOwner = 1234;
constexpr gid_t kGroup = 2345;
constexpr const char* kAttribute = "user.orvo.test";
constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kFolderName = "sessions";
constexpr const char* kName = "song.orvo";
constexpr const char* kOther = "other.orvo";
constexpr const char* kOtherContent = "another session";

/// In the kernel's format: owner rw, user 1234 r, group none, mask r, others none.
constexpr std::array<unsigned char, 44> kSomeAccessList{2,  0, 0, 0,                       //
                                                        1,  0, 6, 0, 255,  255, 255, 255,  //
                                                        2,  0, 4, 0, 0xD2, 4,   0,   0,    //
                                                        4,  0, 0, 0, 255,  255, 255, 255,  //
                                                        16, 0, 4, 0, 255,  255, 255, 255,  //
                                                        32, 0, 0, 0, 255,  255, 255, 255};

void Check(int result, const char* what) {
    if (result != 0) {
        throw std::runtime_error(std::string("cannot prepare: ") + what);
    }
}

/// Ignores file systems without attributes: there, less can go wrong.
void SetAttribute(const std::string& path, const char* name, const std::string& value) {
    const int result = setxattr(path.c_str(), name, value.data(), value.size(), 0);
    Check(result != 0 && errno == ENOTSUP ? 0 : result, name);
}

std::string AttributeOf(const std::string& path, const char* name) {
    std::string value(1024, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return value;
}

void Write(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

}  // namespace

std::vector<Scenario> Scenarios() {
    std::vector<Scenario> scenarios{
        {.name = "a new file", .hasOld = false},
        {.name = "an old file"},
        {.name = "an old file behind a link, with a stray", .isLinked = true, .hasStray = true},
    };
    if (geteuid() == 0) {
        scenarios.push_back({.name = "somebody else's file", .isPrivileged = false});
        scenarios.push_back(
            {.name = "a folder that cannot be read", .isReadable = false, .isPrivileged = false});
    }
    return scenarios;
}

Stage::Stage(std::string folder, const Scenario& scenario)
    : folder_(std::move(folder) + "/" + kFolderName),
      scenario_(scenario),
      path_(folder_ + (scenario.isLinked ? "/link" : "/") + (scenario.isLinked ? "" : kName)),
      file_(folder_ + "/" + kName) {}

void Stage::Prepare(const std::string& old) const {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directory(folder_);
    Check(chmod(folder_.c_str(), scenario_.isReadable ? 0777 : 0333), "the folder");
    Write(folder_ + "/" + kOther, kOtherContent);
    if (scenario_.isLinked) {
        Check(symlink(kName, path_.c_str()), "the link");
    }
    if (scenario_.hasStray) {
        Write(folder_ + "/." + kName + ".orvo-tmp-0123456789ab", "half a sess");
    }
    if (!scenario_.hasOld) {
        return;
    }
    Write(file_, old);
    if (!scenario_.isPrivileged) {
        Check(chmod(file_.c_str(), 0666), "the file's mode");
        return;
    }
    SetAttribute(file_, kAttribute, "value");
    SetAttribute(file_, kAccessList, {kSomeAccessList.begin(), kSomeAccessList.end()});
    if (geteuid() == 0) {
        Check(chown(file_.c_str(), kOwner, kGroup), "the file's owner");
    }
}

std::size_t Stage::Strays() const {
    return CountStrays(folder_);
}

bool Stage::IsTidy() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
        names.push_back(entry.path().filename().native());
    }
    std::vector<std::string> expected{kOther, kName};
    if (scenario_.isLinked) {
        expected.emplace_back("link");
    }
    return std::is_permutation(names.begin(), names.end(), expected.begin(), expected.end());
}

bool Stage::IsSurroundingKept() const {
    return ContentOf(folder_ + "/" + kOther) == kOtherContent &&
           (!scenario_.isLinked || std::filesystem::is_symlink(path_));
}

Properties Stage::PropertiesOfFile() const {
    struct stat status {};
    if (stat(file_.c_str(), &status) != 0) {
        return {};
    }
    return {.mode = status.st_mode,
            .owner = status.st_uid,
            .group = status.st_gid,
            .attribute = AttributeOf(file_, kAttribute),
            .accessList = AttributeOf(file_, kAccessList)};
}

}  // namespace test
