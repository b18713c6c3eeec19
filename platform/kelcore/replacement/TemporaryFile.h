#pragma once

#include <sys/types.h>

#include <string>

#include "platform/kelcore/replacement/Target.h"

namespace kelcore::replacement {

/// A new file under a passing name (".NAME.orvo-tmp-" and 12 hexadecimal digits) beside the file it
/// is going to replace. It is locked for as long as it is held, so that a later replacement can
/// tell it from one that a crash left behind.
class TemporaryFile {
public:
    /// Also removes what earlier replacements of the same file left behind, where the folder may be
    /// read.
    /// @throws file_exception
    explicit TemporaryFile(const Target& target);

    /// Removes the file, unless it was renamed.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int Number() const noexcept { return file_.Number(); }

    /// In the target's folder; empty once it was renamed.
    const std::string& Name() const noexcept { return name_; }

    /// Gives it the target's name.
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
