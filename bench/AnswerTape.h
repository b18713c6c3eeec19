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

/// A text of a tape. It counts no references, because the tape owns it.
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

/// The answers of a host in one write, in the order of the calls, to be given again without the
/// host. An answer is one entry: the bits of a number, the address of a text, or whether there was
/// an object. An operation's result comes first, then its outputs, then the address and size of the
/// bytes that it put into a buffer.
class AnswerTape {
public:
    using Entry = std::uint64_t;

    /// Appends the answers of a call. A recorder's sink calls it.
    void Append(const refhost::CallRecord& call);

    const std::vector<Entry>& Entries() const { return entries_; }

private:
    void AppendValue(const refhost::TraceValue& value);
    void AppendText(const std::u16string& text);
    void AppendBuffer(const refhost::CallRecord& call);

    using SizeKey = std::pair<std::uint64_t, std::string>;  // object, operation

    std::vector<Entry> entries_;
    std::map<std::u16string, TapeText> texts_;
    std::map<SizeKey, std::size_t> sizes_;  // of each object's blocks, as it last said
    std::deque<std::vector<kelcore::byte>> blocks_;
};

}  // namespace bench
