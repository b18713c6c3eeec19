#include "session/json/JsonInput.h"

#include <algorithm>
#include <string_view>

#include "platform/kelcore/TextUnits.h"
#include "session/json/MessageText.h"

namespace orvo::json {
namespace {

/// The place after `text`, which begins at the given place.
TextPlace Behind(TextPlace begin, std::string_view text) {
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        ++begin.line;
        begin.column = 1;
        text.remove_prefix(end + 1);
    }
    const auto characters =
        std::count_if(text.begin(), text.end(), [](char byte) { return BeginsCharacter(byte); });
    begin.column += static_cast<std::size_t>(characters);
    return begin;
}

}  // namespace

TextPlace JsonInput::PlaceOf(std::size_t offset) const {
    if (offset < charactersBefore_) {
        return lastBefore_;
    }
    const std::string_view origin = std::string_view(document_).substr(0, block_.origin);
    return Behind(begin_, origin.substr(0, blocks_.OriginOf(origin, offset - charactersBefore_)));
}

bool JsonInput::NextBlock() {
    PassBlock();
    while (block_.text.empty() && !ended_) {
        Append();
        MakeBlock();
    }
    if (block_.text.empty() && endedByNul_) {
        throw JsonError("a NUL character; remove it", begin_);
    }
    return !block_.text.empty();
}

void JsonInput::PassBlock() {
    if (block_.text.empty()) {
        return;
    }
    const std::string_view origin = std::string_view(document_).substr(0, block_.origin);
    lastBefore_ = Behind(begin_, origin.substr(0, origin.size() - 1));
    begin_ = Behind(lastBefore_, origin.substr(origin.size() - 1));
    charactersBefore_ += block_.text.size();
    document_.erase(0, block_.origin);
    block_ = {};
}

void JsonInput::Append() {
    const std::string_view piece = source_();
    bytes_ += piece.size();
    if (progress_ && !piece.empty()) {
        progress_(bytes_);
    }
    const std::size_t nul = piece.find('\0');
    endedByNul_ = nul != piece.npos;
    ended_ = endedByNul_ || piece.empty();
    document_ += piece.substr(0, nul);
}

void JsonInput::MakeBlock() {
    const bool isBegin = charactersBefore_ == 0;
    if (isBegin && document_.size() < kelcore::kUtf8Mark.size() && !ended_) {
        return;
    }
    if (isBegin && document_.starts_with(kelcore::kUtf8Mark)) {
        begin_.column = 0;  // it is a character that does not count
    }
    block_ = blocks_.Make(document_, ended_);
    next_ = block_.text.data();
    end_ = next_ + block_.text.size();
}

}  // namespace orvo::json
