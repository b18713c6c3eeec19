#pragma once

#include <string>

#include "format/document/File.h"

namespace tses {

/// What a file element says. One record serves all files of a session.
struct PendingFile : FileRecord {
    /// Restores the defaults. The texts keep their capacity, so that the next file need not
    /// allocate.
    void Reset() {
        id = FileRecord().id;
        for (std::u16string* const text :
             {&absolutePath, &relativePath, &mediaHandler, &recoveryId, &importerPrivateSettings}) {
            text->clear();
        }
    }
};

/// What the document's elements remember during a read.
struct DocumentReadState {
    std::u16string appVersion;  // of the last "session" start tag
    PendingFile file;

    void Clear() { *this = {}; }
};

}  // namespace tses
