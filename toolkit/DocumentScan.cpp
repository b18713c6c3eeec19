#include "toolkit/DocumentScan.h"

#include <string_view>
#include <utility>

#include "toolkit/FileContent.h"
#include "toolkit/TextPlaces.h"
#include "toolkit/scan/ContentScan.h"

namespace toolkit {
namespace {

Problem NotUtf8(std::string_view content, std::size_t offset) {
    const Place place = {CountLineEnds(content.substr(0, offset)) + 1, ColumnOf(content, offset)};
    return {place, "not UTF-8", "save it as UTF-8, or let the XML declaration state its encoding"};
}

/// Finds places only in a document that has something to report.
DocumentScan ScanWithPlaces(std::string_view content, const Conversion& conversion,
                            std::size_t limit, const std::stop_token& stop) {
    DocumentScan result = ScanContent(content, conversion, limit, Places::Unknown, stop);
    if (result.problem || result.notCarriedCount != 0) {
        result = ScanContent(content, conversion, limit, Places::Known, stop);
    }
    if (result.problem) {
        // The parser decodes ahead of what it reads, so it does not know where decoding fails.
        if (const auto offset = FindMalformedUtf8(content)) {
            result.problem = NotUtf8(content, *offset);
        }
    }
    return result;
}

}  // namespace

DocumentScan ScanDocument(const std::string& path, const Conversion& conversion, std::size_t limit,
                          const std::stop_token& stop) {
    DocumentScan result;
    auto content = ReadFileContent(path, stop);
    if (auto* const problem = std::get_if<Problem>(&content)) {
        result.problem = std::move(*problem);
    } else if (std::get<std::string>(content).empty()) {
        result.problem = Problem{{}, "the file is empty", "not a session file"};
    } else {
        result = ScanWithPlaces(std::get<std::string>(content), conversion, limit, stop);
    }
    if (stop.stop_requested()) {
        result.problem.reset();
    }
    return result;
}

}  // namespace toolkit
