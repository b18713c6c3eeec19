#pragma once

#include <string>

namespace bench {

/// A temporary folder, removed in the destructor with everything in it.
class WorkFolder {
public:
    /// @param parent  empty: a folder in memory if there is one, else the system's temporary folder
    /// @throws std::runtime_error if the folder cannot be made
    explicit WorkFolder(const std::string& parent = {});
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

}  // namespace bench
