#pragma once

#include <stdexcept>
#include <utility>

#include <orvo/Message.h>

namespace toolkit::interchange {

/// Why a conversion failed, for the user.
class Failure : public std::runtime_error {
public:
    explicit Failure(orvo::Message message)
        : std::runtime_error(message.what), message_(std::move(message)) {}

    const orvo::Message& What() const { return message_; }

private:
    orvo::Message message_;
};

}  // namespace toolkit::interchange
