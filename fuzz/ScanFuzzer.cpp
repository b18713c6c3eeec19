#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/PluginUnderTest.h"
#include "toolkit/scan/ContentScan.h"

// Looks for losses in arbitrary documents. Of those that are well-formed, the quick look must not
// take one for clean in which the whole scan finds a loss.

namespace {

bool IsClean(std::string_view document, const toolkit::Conversion& conversion) {
    bool isFirst = true;
    return toolkit::IsKnownAsClean(
        [&] {
            const bool wasFirst = isFirst;
            isFirst = false;
            return wasFirst ? document : std::string_view();
        },
        conversion, {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const toolkit::LibraryUse library;
    const std::string_view document(reinterpret_cast<const char*>(data), size);
    for (const auto target : {toolkit::Target::SessionFile, toolkit::Target::Json}) {
        const toolkit::Conversion conversion = {
            .target = target, .from = u"/there/a.orvo", .to = u"/here/b.orvo"};
        if (!IsClean(document, conversion)) {
            continue;
        }
        const toolkit::DocumentScan scan = toolkit::ScanContent(document, conversion, 1, {});
        if (!scan.problem && scan.notCarriedCount != 0) {
            fuzz::Fail("taken for clean: " + scan.notCarried.front().what);
        }
    }
    return 0;
}
