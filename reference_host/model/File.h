#pragma once

#include <iosfwd>
#include <string>

#include "platform/kelcore/Types.h"

namespace refhost::model {

/// One media file that clips refer to by its id.
struct File {
    kelcore::uint32 id = 0;
    std::u16string path{};                     ///< the full path; may be empty, need not exist
    std::u16string mediaHandler{};             ///< the identifier of the handler that imported it
    std::u16string recoveryId{};               ///< what crash recovery knows the file by
    std::u16string importerPrivateSettings{};  ///< what the importer wants back, as it was

    friend bool operator==(const File&, const File&) = default;
};

/// Prints the JSON form.
std::ostream& operator<<(std::ostream& out, const File& file);

}  // namespace refhost::model
