#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

/// Files that are about to be replaced by a save.
namespace test {

/// A place to save to, and what is there before.
struct Scenario {
    const char* name;
    bool hasOld = true;        ///< a file stands there
    bool isLinked = false;     ///< behind a link
    bool hasStray = false;     ///< a program that was killed left its temporary file beside it
    bool isReadable = true;    ///< the folder may be read by who saves
    bool isPrivileged = true;  ///< the saver has the rights of this process, or none at all
};

/// Those that differ in the calls that a save makes. Some need a privileged user, and are left out
/// for others.
std::vector<Scenario> Scenarios();

/// What of a file a save takes over beside the name.
struct Properties {
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;
    std::string attribute;
    std::string accessList;

    friend bool operator==(const Properties&, const Properties&) = default;
};

/// A scenario as it stands in a folder.
class Stage {
public:
    Stage(std::string folder, const Scenario& scenario);

    /// Makes all as it is before a save, with `old` as content.
    void Prepare(const std::string& old) const;

    /// Where a host saves to.
    const std::string& Path() const { return path_; }

    /// Where the bytes stand.
    const std::string& File() const { return file_; }

    /// How many temporary files there are.
    std::size_t Strays() const;

    /// The names of all that should be there after a save, and nothing else is.
    bool IsTidy() const;

    /// Whether what a save has nothing to do with is as it was.
    bool IsSurroundingKept() const;

    Properties PropertiesOfFile() const;

private:
    std::string folder_;
    Scenario scenario_;
    std::string path_;
    std::string file_;
};

}  // namespace test
