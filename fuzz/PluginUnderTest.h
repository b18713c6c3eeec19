#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "reference_host/Plugin.h"
#include "reference_host/Sessions.h"

namespace fuzz {

/// The plug-in, loaded once.
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

/// Reads a document; ends the process if the plug-in's result is none of a read's, or if anything
/// of the host is alive afterwards that was not before.
refhost::ReadResult ReadDocument(std::string_view document);

/// A session as the plug-in saves it, in a folder of the process's own.
struct Saved {
    tses::SessionResult result;
    std::string document;
};
Saved SaveSession(refhost::model::Session session);

/// Ends the process with a message.
[[noreturn]] void Fail(const std::string& what);

}  // namespace fuzz
