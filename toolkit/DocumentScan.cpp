#include "toolkit/DocumentScan.h"

#include <string_view>
#include <utility>

#include "toolkit/FileContent.h"
#include "toolkit/TextPlaces.h"
#include "toolkit/scan/ContentScan.h"

namespace toolkit {
namespace {

DocumentScan EndedBy(Problem problem) {
    DocumentScan scan;
    scan.problem = std::move(problem);
    return scan;
}

Problem NotUtf8(std::string_view content, std::size_t offset) {
    const Place place = {CountLineEnds(content.substr(0, offset)) + 1, ColumnOf(content, offset)};
    return {place, "not UTF-8", "save it as UTF-8, or let the XML declaration state its encoding"};
}

DocumentScan ScanWithPlaces(const std::string& path, const Conversion& conversion,
                            std::size_t limit, const std::stop_token& stop) {
    const auto read = ReadFileContent(path, stop);
    if (const auto* const problem = std::get_if<Problem>(&read)) {
        return EndedBy(*problem);
    }
    const auto& content = std::get<std::string>(read);
    DocumentScan result = ScanContent(content, conversion, limit, stop);
    if (result.problem) {
        // The parser decodes ahead of what it reads, so it does not know where decoding fails.
        if (const auto offset = FindMalformedUtf8(content)) {
            result.problem = NotUtf8(content, *offset);
        }
    }
    return result;
}

/// Finds places only in a document that has something to report.
DocumentScan ScanFile(const std::string& path, const Conversion& conversion, std::size_t limit,
                      const std::stop_token& stop) {
    FileBlocks blocks(path);
    bool isEmpty = true;
    const auto next = [&] {
        const std::string_view block = blocks.Next();
        isEmpty = isEmpty && block.empty();
        return block;
    };
    DocumentScan result = ScanWithoutPlaces(next, conversion, limit, stop);
    if (blocks.Failure()) {
        return EndedBy(*blocks.Failure());
    }
    if (isEmpty) {
        return EndedBy({{}, "the file is empty", "not a session file"});
    }
    return result.problem || result.notCarriedCount != 0
               ? ScanWithPlaces(path, conversion, limit, stop)
               : result;
}

}  // namespace

DocumentScan ScanDocument(const std::string& path, const Conversion& conversion, std::size_t limit,
                          const std::stop_token& stop) {
    DocumentScan result = ScanFile(path, conversion, limit, stop);
    if (stop.stop_requested()) {
        result.problem.reset();
    }
    return result;
}

}  // namespace toolkit
