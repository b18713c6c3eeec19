#pragma once

#include <string>

#include "platform/kelcore/Types.h"

namespace tses {

/// What a file element says.
struct FileRecord {
    kelcore::uint32 id = 4294967295;
    std::u16string absolutePath;
    std::u16string relativePath;
    std::u16string mediaHandler;  // the identifier, not the readable name
    std::u16string recoveryId;
    std::u16string importerPrivateSettings;

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
    FileRecord file;

    void Clear() { *this = {}; }
};

}  // namespace tses
