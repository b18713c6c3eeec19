#include "bench/AnswerTape.h"

#include <bit>
#include <stdexcept>
#include <type_traits>
#include <variant>

namespace bench {
namespace {

constexpr std::string_view kSizeSuffix = "Size";

template <class Object>
AnswerTape::Entry EntryOf(Object* object) {
    return reinterpret_cast<AnswerTape::Entry>(object);
}

}  // namespace

void AnswerTape::Append(const refhost::CallRecord& call) {
    if (call.returned) {
        entries_.push_back(call.returned->IsNull() ? 0 : 1);
    }
    if (call.value) {
        AppendValue(*call.value);
        const auto* const size = std::get_if<std::uint64_t>(&*call.value);
        if (size != nullptr && call.operation.ends_with(kSizeSuffix)) {
            sizes_[{call.objectNumber, std::string(call.operation)}] = *size;
        }
    }
    for (const refhost::TraceValue& output : call.outputs) {
        AppendValue(output);
    }
    if (call.buffer != nullptr) {
        AppendBuffer(call);
    }
}

void AnswerTape::AppendValue(const refhost::TraceValue& value) {
    const auto append = [this](const auto& held) {
        using Held = std::remove_cvref_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::u16string>) {
            AppendText(held);
        } else if constexpr (std::is_same_v<Held, double>) {
            entries_.push_back(std::bit_cast<Entry>(held));
        } else if constexpr (std::is_same_v<Held, float>) {
            entries_.push_back(std::bit_cast<std::uint32_t>(held));
        } else if constexpr (std::is_arithmetic_v<Held>) {
            entries_.push_back(static_cast<Entry>(held));
        } else if constexpr (std::is_same_v<Held, std::monostate>) {
            entries_.push_back(0);
        } else {
            throw std::logic_error("an answer of a kind that no operation of a write has");
        }
    };
    std::visit(append, value);
}

void AnswerTape::AppendText(const std::u16string& text) {
    tses::IHostString* const held = &texts_.try_emplace(text, text).first->second;
    entries_.push_back(EntryOf(held));
}

/// The size comes from the operation of the same name plus "Size", called before.
void AnswerTape::AppendBuffer(const refhost::CallRecord& call) {
    const std::string sizeOperation = std::string(call.operation) + std::string(kSizeSuffix);
    const std::size_t size = sizes_.at({call.objectNumber, sizeOperation});
    const auto& block = blocks_.emplace_back(call.buffer, call.buffer + size);
    entries_.push_back(EntryOf(block.data()));
    entries_.push_back(size);
}

}  // namespace bench
