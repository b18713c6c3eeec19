#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "reference_host/Plugin.h"
#include "reference_host/Sessions.h"

namespace fuzz {

/// The plug-in, loaded on first use.
refhost::Plugin& LoadedPlugin();

/// A file in memory that has a path.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::u16string Path() const;

private:
    int descriptor_;
};

/// Reads a document. Ends the process if the result is not a valid result of a read, or if host
/// objects leak.
refhost::ReadResult ReadDocument(std::string_view document);

/// A session as the plug-in saves it, in a folder that belongs to this process.
struct Saved {
    tses::SessionResult result;
    std::string document;
};
Saved SaveSession(const orvo::Session& session);

/// Prints a message and ends the process.
[[noreturn]] void Fail(const std::string& what);

}  // namespace fuzz
