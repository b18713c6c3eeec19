#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/HostObject.h"
#include "platform/kelcore/Types.h"
#include "reference_host/recorder/CallRecord.h"

namespace bench {

/// A text that was made beforehand. Its references are not counted: it belongs to its tape.
class TapeText final : public tses::IHostString {
public:
    explicit TapeText(std::u16string text) : text_(std::move(text)) {}

    void AddReference() override {}
    void Release() override {}
    void UnusedSlot3() override {}
    const kelcore::char16* GetData() override { return text_.data(); }
    kelcore::uint32 GetLength() override { return static_cast<kelcore::uint32>(text_.size()); }

private:
    std::u16string text_;
};

/// The answers that a host gave in one write, in the order of the calls, so that they can be given
/// again without a host. Each is one entry: the bits of a number, the address of a text, whether
/// there was an object; after an operation's result come its outputs, and the place and size of
/// what it put into a buffer.
class AnswerTape {
public:
    using Entry = std::uint64_t;

    /// Appends what a call answered; for a recorder's sink.
    void Append(const refhost::CallRecord& call);

    const std::vector<Entry>& Entries() const { return entries_; }

private:
    void AppendValue(const refhost::TraceValue& value);
    void AppendText(const std::u16string& text);
    void AppendBuffer(const refhost::CallRecord& call);

    using SizeKey = std::pair<std::uint64_t, std::string>;  // the object, the operation

    std::vector<Entry> entries_;
    std::map<std::u16string, TapeText> texts_;
    std::map<SizeKey, std::size_t> sizes_;  // of the blocks that objects told of last
    std::deque<std::vector<kelcore::byte>> blocks_;
};

}  // namespace bench
