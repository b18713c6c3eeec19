#pragma once

#include <string>

#include "format/document/File.h"

namespace tses {

/// What a file element says. The session's files share one, whose texts keep their room.
struct PendingFile : FileRecord {
    /// As it was at first, but that the texts keep their room.
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
