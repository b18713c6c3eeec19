#include "tests/support/FeaturesUnderTest.h"

#include <cstdlib>
#include <string_view>

#include "host/Features.h"
#include "platform/kelappsupport/Features.h"
#include "reference_host/Sessions.h"

namespace test {

bool UsesStreamedDocuments() {
    const char* const name = std::getenv("ORVO_DOCUMENT");
    return name != nullptr && std::string_view(name) == "streamed";
}

void UseFeaturesUnderTest() {
    refhost::UseFeatureDefaults();
    kelappsupport::SetFeatureEnabled(tses::features::kStreamedSave, UsesStreamedDocuments());
}

}  // namespace test
