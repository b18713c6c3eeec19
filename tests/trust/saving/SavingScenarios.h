#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

/// Situations in which a save replaces a file.
namespace test {

/// The target of a save and its surroundings.
struct Scenario {
    const char* name;
    bool hasOld = true;        ///< the file exists
    bool isLinked = false;     ///< the path is a link to it
    bool hasStray = false;     ///< a killed program left its temporary file
    bool isReadable = true;    ///< the saver may read the folder
    bool isPrivileged = true;  ///< the saver has the rights of this process, otherwise none
};

/// Scenarios that differ in the system calls of a save. Omits those that need privileges that this
/// process does not have.
std::vector<Scenario> Scenarios();

/// The properties of a file that a save preserves.
struct Properties {
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;
    std::string attribute;
    std::string accessList;

    friend bool operator==(const Properties&, const Properties&) = default;
};

/// A scenario set up in a folder.
class Stage {
public:
    Stage(std::string folder, const Scenario& scenario);

    /// Restores the state before a save, with `old` as the content.
    void Prepare(const std::string& old) const;

    /// The path that a host saves to.
    const std::string& Path() const { return path_; }

    /// The path of the file itself.
    const std::string& File() const { return file_; }

    /// The number of temporary files.
    std::size_t Strays() const;

    /// Whether the folders contain exactly what they should after a save.
    bool IsTidy() const;

    /// Whether everything unrelated to the save is unchanged.
    bool IsSurroundingKept() const;

    Properties PropertiesOfFile() const;

private:
    std::string folder_;
    Scenario scenario_;
    std::string path_;
    std::string file_;
};

}  // namespace test
