#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/LogTarget.h"
#include "reference_host/CountedObject.h"

namespace refhost {

/// Collects the parser's messages. Begins with one reference.
class LogTarget final : public CountedObject<tses::IHostLogTarget> {
public:
    using Listener = std::function<void(const std::u16string&)>;

    /// Calls `listener`, which may be empty, with each message as it comes.
    explicit LogTarget(Listener listener = {});

    void UnusedSlot3() override {}
    void UnusedSlot4() override {}
    void UnusedSlot5() override {}
    void UnusedSlot6() override {}
    void UnusedSlot7() override {}
    void UnusedSlot8() override {}
    void LogMessage(tses::IHostString* text) override;

    /// The messages so far, each with the line end that it came with.
    const std::vector<std::u16string>& Messages() const { return messages_; }

private:
    Listener listener_;
    std::vector<std::u16string> messages_;
};

}  // namespace refhost
