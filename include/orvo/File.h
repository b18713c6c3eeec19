#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include <orvo/Api.h>

namespace orvo {

/// One media file that clips refer to by its id.
struct File {
    std::uint32_t id = 0;
    std::string path{};                     ///< a full path; may be empty, need not exist
    std::string mediaHandler{};             ///< the identifier of the handler that imported it
    std::string recoveryId{};               ///< the id that crash recovery uses for the file
    std::string importerPrivateSettings{};  ///< what the importer wants back, as it was

    friend bool operator==(const File&, const File&) = default;
};

/// Prints the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const File& file);

}  // namespace orvo
