#include "tests/support/DocumentUnderTest.h"

#include <cstdlib>
#include <string_view>

namespace test {

tses::DocumentMaker DocumentUnderTest() {
    const char* const name = std::getenv("ORVO_DOCUMENT");
    return name != nullptr && std::string_view(name) == "streamed" ? tses::MakeStreamedDocument
                                                                   : tses::MakeDomDocument;
}

}  // namespace test
