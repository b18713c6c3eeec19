#pragma once

namespace toolkit {

/// Starts the XML library, which counts its starts without a lock, and stops it again. While the
/// plug-in works in another thread, it must not be made or destroyed.
class LibraryUse {
public:
    LibraryUse();
    ~LibraryUse();
    LibraryUse(const LibraryUse&) = delete;
    LibraryUse& operator=(const LibraryUse&) = delete;
};

}  // namespace toolkit
