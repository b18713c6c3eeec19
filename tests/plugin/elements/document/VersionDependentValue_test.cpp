#include <gtest/gtest.h>

#include "reference_host/SessionNode.h"
#include "tests/support/SerializerTestAccess.h"

// At the end of "session" the host gets one of two positions, depending on the version of the file.

namespace tses {
namespace {

kelcore::int64 ValueAfter(const std::u16string& appVersion) {
    const auto session = refhost::SessionNode::Make();
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SerializerTestAccess::Attach(impl, &session->Edit());
    SerializerTestAccess::SavedState(impl).ctiPosition = 111;
    SerializerTestAccess::SavedState(impl).selectionStart = 222;
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.StartElementEvent(u"", u"session", u"session", {{u"appVersion", appVersion.c_str()}});
    events.EndElementEvent(u"", u"session", u"session");
    return session->Value().versionDependentValue;
}

TEST(VersionDependentValue, IsTheCurrentTimePositionForExactlyTheFirstVersion) {
    EXPECT_EQ(ValueAfter(u"4.0"), 111);
}

TEST(VersionDependentValue, IsTheSelectionStartForEveryOtherText) {
    for (const char16_t* const version :
         {u"4.0.1", u"4.00", u"4.", u"", u" 4.0", u"4,0", u"25.1"}) {
        EXPECT_EQ(ValueAfter(version), 222);
    }
}

}  // namespace
}  // namespace tses
