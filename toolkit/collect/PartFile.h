#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>
#include <system_error>

namespace toolkit {

/// A file of the system's calls failed.
using SystemError = std::system_error;

/// A file under construction, which gets its name once it is complete and on disk.
class PartFile {
public:
    /// Replaces the one that an interruption left.
    /// @throws SystemError
    explicit PartFile(std::string path);

    /// Removes it unless it has got its name.
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    /// Shares the content of an open file. Returns whether the file system can.
    bool Clone(int source) const;

    /// @throws SystemError
    void Write(std::string_view block) const;

    /// Writes it to disk and gives it the name, which must be free. The times are those of the
    /// source if there is one.
    /// @throws SystemError
    void Publish(const std::string& name, const struct stat* source);

private:
    std::string path_;
    int descriptor_;
    bool isPublished_ = false;
};

/// Writes the names in a folder to disk. Ignores failures, because the files are whole.
void SyncFolder(const std::string& folder);

}  // namespace toolkit
