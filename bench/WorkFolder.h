#pragma once

#include <string>

namespace bench {

/// A folder of this program's own for what it writes, removed at the end with everything in it.
class WorkFolder {
public:
    /// @param parent  empty: one in memory if the system has it, else the place for temporary files
    /// @throws std::runtime_error if it cannot be made
    explicit WorkFolder(const std::string& parent = {});
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

}  // namespace bench
