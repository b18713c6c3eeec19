#include "reference_host/LogTarget.h"

#include <gmock/gmock.h>

#include "reference_host/HostString.h"
#include "reference_host/Ref.h"
#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

using ::testing::ElementsAre;

class LogTargetTest : public test::NoLiveNodes {
protected:
    static void Log(LogTarget& target, const std::u16string& text) {
        const auto string = Ref<HostString>::Adopt(new HostString(text));
        target.LogMessage(string.Get());
    }
};

TEST_F(LogTargetTest, KeepsMessagesInOrder) {
    const auto target = Ref<LogTarget>::Adopt(new LogTarget);
    Log(*target, u"first\n");
    Log(*target, u"second\n");
    EXPECT_THAT(target->Messages(), ElementsAre(u"first\n", u"second\n"));
}

TEST_F(LogTargetTest, PassesEachMessageToItsListenerAsItComes) {
    std::vector<std::u16string> heard;
    const auto target = Ref<LogTarget>::Adopt(
        new LogTarget([&heard](const std::u16string& message) { heard.push_back(message); }));
    Log(*target, u"first\n");
    EXPECT_THAT(heard, ElementsAre(u"first\n"));
}

}  // namespace
}  // namespace refhost
