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
    return {place, "not UTF-8", "save it as UTF-8, or let the XML declaration state its encoding",
            true};
}

DocumentScan ScanFile(const std::string& path, const Conversion& conversion, std::size_t limit,
                      const std::stop_token& stop) {
    const auto read = ReadFileContent(path, stop);
    if (const auto* const problem = std::get_if<Problem>(&read)) {
        return EndedBy(*problem);
    }
    const auto& content = std::get<std::string>(read);
    if (content.empty()) {
        return EndedBy({{}, "the file is empty", "not a session file"});
    }
    DocumentScan result = ScanContent(content, conversion, limit, stop);
    if (result.problem) {
        // The parser decodes ahead of what it reads, so it does not know where decoding fails.
        if (const auto offset = FindMalformedUtf8(content)) {
            result.problem = NotUtf8(content, *offset);
        }
    }
    return result;
}

bool IsFileKnownAsClean(const std::string& path, const Conversion& conversion,
                        const std::stop_token& stop) {
    FileBlocks blocks(path);
    return IsKnownAsClean([&blocks] { return blocks.Next(); }, conversion, stop) &&
           !blocks.Failure();
}

DocumentScan Scan(const std::string& path, const Conversion& conversion, std::size_t limit,
                  const std::stop_token& stop) {
    DocumentScan result = ScanFile(path, conversion, limit, stop);
    if (stop.stop_requested()) {
        result.problem.reset();
    }
    return result;
}

}  // namespace

DocumentScan ScanDocument(const std::string& path, const Conversion& conversion, std::size_t limit,
                          const std::stop_token& stop) {
    const LibraryUse library;
    return Scan(path, conversion, limit, stop);
}

DocumentScan ScanFileBesideRead(const LibraryUse& /*library*/, const std::string& path,
                                const Conversion& conversion, std::size_t limit,
                                const std::stop_token& stop) {
    return IsFileKnownAsClean(path, conversion, stop) ? DocumentScan()
                                                      : Scan(path, conversion, limit, stop);
}

}  // namespace toolkit
