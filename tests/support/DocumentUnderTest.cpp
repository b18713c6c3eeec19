#include "tests/support/DocumentUnderTest.h"

#include "tests/support/FeaturesUnderTest.h"

namespace test {

tses::DocumentMaker DocumentUnderTest() {
    return UsesStreamedDocuments() ? tses::MakeStreamedDocument : tses::MakeDomDocument;
}

}  // namespace test
