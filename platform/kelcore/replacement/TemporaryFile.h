#pragma once

#include <sys/types.h>

#include <string>

#include "platform/kelcore/replacement/Target.h"

namespace kelcore::replacement {

/// A new file with a temporary name (".NAME.orvo-tmp-" and 12 hexadecimal digits) next to the file
/// it will replace. It stays locked while in use, so that a later replacement can tell it from one
/// that a crash left behind.
class TemporaryFile {
public:
    /// Also removes leftovers of earlier replacements of the same file, if the folder is readable.
    /// @throws file_exception
    explicit TemporaryFile(const Target& target);

    /// Removes the file unless it was renamed.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int Number() const noexcept { return file_.Number(); }

    /// The name in the target's folder; empty after the rename.
    const std::string& Name() const noexcept { return name_; }

    /// Renames the file to the target's name.
    /// @throws file_exception
    void RenameTo(const std::string& name);

private:
    bool TryName(mode_t mode);
    bool HasName(const std::string& name) const;

    int folder_;
    std::string name_;
    Descriptor file_;
};

}  // namespace kelcore::replacement
