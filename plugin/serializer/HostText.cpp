#include "plugin/serializer/HostText.h"

#include <atomic>
#include <stdexcept>

#include "format/Limits.h"

namespace tses {
namespace {

class PlugInString final : public IHostString {
public:
    explicit PlugInString(std::u16string text) : text_(std::move(text)) {}

    void AddReference() override { ++references_; }

    void Release() override {
        if (--references_ == 0) {
            delete this;
        }
    }

    void UnusedSlot3() override {}
    const kelcore::char16* GetData() override { return text_.c_str(); }
    kelcore::uint32 GetLength() override { return static_cast<kelcore::uint32>(text_.size()); }

private:
    ~PlugInString() = default;

    std::u16string text_;
    std::atomic<int> references_ = 1;
};

}  // namespace

InlineText TextOf(IHostString* returned) {
    const auto string = Retain(returned);
    if (!string) {
        return {};
    }
    const kelcore::uint32 length = string->GetLength();
    if (length > limits::kTextUnits) {
        throw std::length_error("a text is longer than " + std::to_string(limits::kTextUnits) +
                                " UTF-16 units");
    }
    const kelcore::char16* const data = length > 0 ? string->GetData() : nullptr;
    return data != nullptr ? InlineText({data, length}) : InlineText();
}

HostReference<IHostString> MakeHostString(std::u16string text) {
    return Adopt<IHostString>(new PlugInString(std::move(text)));
}

}  // namespace tses
