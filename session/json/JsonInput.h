#pragma once

#include <cstddef>
#include <iterator>
#include <string>

#include "platform/kelcore/Types.h"
#include "session/json/MarkedBlocks.h"
#include "session/json/SessionJson.h"

namespace orvo::json {

/// A JSON document that comes in blocks, as the JSON library parses it: one character after
/// another, with marks in place of lone surrogates (LoneSurrogates.h). Holds one block at a time.
class JsonInput {
public:
    JsonInput(const TextSource& source, const ByteProgress& progress)
        : source_(source), progress_(progress) {}

    class Iterator;
    Iterator begin();
    Iterator end();

    /// Where in the document a character stands.
    /// @param offset  how many characters the library read before it: of the last one that it read,
    ///                the one before that, or behind the end
    TextPlace PlaceOf(std::size_t offset) const;

private:
    /// @throws JsonError at a NUL character, which the library would take for the end
    bool AtEnd() { return next_ == end_ && !NextBlock(); }

    bool NextBlock();
    void PassBlock();
    void Append();
    void MakeBlock();

    const TextSource& source_;
    const ByteProgress& progress_;
    kelcore::uint64 bytes_ = 0;  // that the source gave
    bool ended_ = false;         // the source gave all, or a NUL character
    bool endedByNul_ = false;

    std::string document_;  // the current block, and what came behind it already
    MarkedBlocks blocks_;
    MarkedBlocks::Block block_{};  // the current one
    const char* next_ = nullptr;   // the character of it that is read next
    const char* end_ = nullptr;

    std::size_t charactersBefore_ = 0;  // the current block
    TextPlace begin_;                   // of the current block
    TextPlace lastBefore_;              // of the character before it
};

/// For the library.
class JsonInput::Iterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    explicit Iterator(JsonInput* input) : input_(input) {}

    reference operator*() const { return *input_->next_; }
    Iterator& operator++() {
        ++input_->next_;
        return *this;
    }
    /// To be compared with the end only.
    bool operator!=(const Iterator&) const { return !input_->AtEnd(); }

private:
    JsonInput* input_;
};

inline JsonInput::Iterator JsonInput::begin() {
    return Iterator(this);
}

inline JsonInput::Iterator JsonInput::end() {
    return Iterator(this);
}

}  // namespace orvo::json
