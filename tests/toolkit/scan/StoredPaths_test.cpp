#include "toolkit/scan/StoredPaths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"

namespace toolkit {

static void PrintTo(const StoredPaths& paths, std::ostream* stream) {
    *stream << testing::PrintToString(paths.absolute) << testing::PrintToString(paths.relative);
}

}  // namespace toolkit

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using toolkit::FindStoredPaths;
using toolkit::StoredPaths;

namespace {

class StoredPathsTest : public testing::Test {
protected:
    std::map<kelcore::uint32, StoredPaths> Find(std::string_view document) {
        return FindStoredPaths(folder_.Write("a.orvo", document));
    }

    test::TemporaryFolder folder_;
};

TEST_F(StoredPathsTest, AreThoseOfTheDocument) {
    EXPECT_THAT(
        Find(R"(<orvo><session/><files>
<file id="3" absolutePath="D:\Jobs\drum.wav" relativePath="Media/drum.wav"/>
<file id="1" absolutePath="/a.wav"/><file id="2" relativePath="b.wav"></file>
</files></orvo>)"),
        ElementsAre(Pair(1, StoredPaths{u"/a.wav", u""}), Pair(2, StoredPaths{u"", u"b.wav"}),
                    Pair(3, StoredPaths{u"D:\\Jobs\\drum.wav", u"Media/drum.wav"})));
}

TEST_F(StoredPathsTest, AFileElementElsewhereDoesNotCount) {
    EXPECT_THAT(Find(R"(<orvo><file id="1" absolutePath="/1"/><session><files><file id="2"/></files>
</session><files><other><file id="3"/></other><file id="4" absolutePath="/4"><file id="5"/></file>
</files></orvo>)"),
                ElementsAre(Pair(4, StoredPaths{u"/4", u""})));
    EXPECT_THAT(Find("<other><files><file id='1'/></files></other>"), IsEmpty());
}

TEST_F(StoredPathsTest, AreFoundUpToWhereAFileIsDamaged) {
    EXPECT_THAT(Find("<orvo><files><file id='1' absolutePath='/1'/></fil"),
                ElementsAre(Pair(1, StoredPaths{u"/1", u""})));
    EXPECT_THAT(Find(""), IsEmpty());
    EXPECT_THAT(FindStoredPaths(folder_ / "none.orvo"), IsEmpty());
}

}  // namespace
