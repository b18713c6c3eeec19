#include "tests/support/DocumentUnderTest.h"

#include <cstdlib>
#include <string_view>

#include "host/Features.h"
#include "platform/kelappsupport/Features.h"
#include "reference_host/Sessions.h"

namespace test {

tses::DocumentMaker DocumentUnderTest() {
    const char* const name = std::getenv("ORVO_DOCUMENT");
    return name != nullptr && std::string_view(name) == "streamed" ? tses::MakeStreamedDocument
                                                                   : tses::MakeDomDocument;
}

void UseFeaturesUnderTest() {
    refhost::UseFeatureDefaults();
    kelappsupport::SetFeatureEnabled(tses::features::kStreamedSave,
                                     DocumentUnderTest() == tses::MakeStreamedDocument);
}

}  // namespace test
