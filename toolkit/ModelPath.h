#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <string>

#include "session/MemberKey.h"

namespace toolkit {

/// The path of a member in the session's JSON, such as "/audioTracks/0/audioClips/3".
class ModelPath {
public:
    ModelPath() = default;

    template <class Struct, class Member>
    ModelPath operator/(Member Struct::*member) const {
        return ModelPath(fmt::format("{}/{}", text_, orvo::KeyOf(member)));
    }
    ModelPath operator/(std::size_t index) const {
        return ModelPath(fmt::format("{}/{}", text_, index));
    }

    const std::string& Text() const { return text_; }

private:
    explicit ModelPath(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

}  // namespace toolkit
