#include "plugin/serializer/HostText.h"

#include <atomic>

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

std::u16string TextOf(IHostString* returned) {
    const auto string = Retain(returned);
    return string ? std::u16string(string->GetData(), string->GetLength()) : std::u16string();
}

HostReference<IHostString> MakeHostString(std::u16string text) {
    return Adopt<IHostString>(new PlugInString(std::move(text)));
}

}  // namespace tses
