#include "reference_host/FileReference.h"

#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

class FileReferenceTest : public test::NoLiveNodes {};

TEST_F(FileReferenceTest, GivesItsPath) {
    const auto reference = Ref<FileReference>::Adopt(new FileReference(u"/music/song.orvo"));
    EXPECT_EQ(TextOf(reference->GetPath()), u"/music/song.orvo");
}

TEST_F(FileReferenceTest, ThePathOutlivesItWhileHeld) {
    auto reference = Ref<FileReference>::Adopt(new FileReference(u"/music/song.orvo"));
    const auto path = Ref<tses::IHostString>::Retain(reference->GetPath());
    reference.Reset();
    EXPECT_EQ(TextOf(path.Get()), u"/music/song.orvo");
}

}  // namespace
}  // namespace refhost
