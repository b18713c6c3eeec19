#pragma once

#include <string>

namespace tses {

/// What the document's elements remember during a read.
struct DocumentReadState {
    std::u16string appVersion;  // of the last "session" start tag

    void Clear() { *this = {}; }
};

}  // namespace tses
