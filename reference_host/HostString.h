#pragma once

#include <string>
#include <utility>

#include "reference_host/CountedObject.h"

namespace refhost {

/// A text that the host returns. Begins with one reference.
class HostString final : public CountedObject<tses::IHostString> {
public:
    explicit HostString(std::u16string text) : text_(std::move(text)) {}

    void UnusedSlot3() override {}
    const kelcore::char16* GetData() override { return text_.data(); }
    kelcore::uint32 GetLength() override { return static_cast<kelcore::uint32>(text_.size()); }

private:
    std::u16string text_;
};

/// The text of a host string; null counts as empty. Holds a reference during the call.
std::u16string TextOf(tses::IHostString* string);

}  // namespace refhost
