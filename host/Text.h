#pragma once

#include <string>
#include <utility>

#include "host/Bases.h"

namespace tses {

/// A text for the plug-in: `IHostString* GetName() override { return &name_; }`.
class HostText final : public HostStringBase {
public:
    HostText() = default;
    explicit HostText(std::u16string text) : value(std::move(text)) {}

    const kelcore::char16* GetData() override { return value.data(); }
    kelcore::uint32 GetLength() override { return static_cast<kelcore::uint32>(value.size()); }

    /// May change whenever the plug-in holds no reference to the text.
    std::u16string value;
};

}  // namespace tses
