#include "session/json/JsonWriter.h"

#include <algorithm>
#include <utility>

#include "platform/kelcore/BinaryText.h"
#include "platform/kelcore/Unicode.h"
#include "session/json/LoneSurrogates.h"

namespace orvo::json {
namespace {

constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
constexpr std::size_t kIndent = 2;

/// Long texts and blocks of bytes are encoded in pieces. Base64 has no padding inside where a
/// piece is a multiple of three bytes.
constexpr std::size_t kPieceSize = std::size_t{24} * 1024;
static_assert(kPieceSize % 3 == 0);

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

/// What a special character of ASCII becomes.
std::string EscapeOf(char character) {
    switch (character) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\b':
            return "\\b";
        case '\f':
            return "\\f";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return UnicodeEscape(static_cast<unsigned char>(character));
    }
}

bool IsAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

/// Whether it needs a closer look.
bool IsSpecial(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\' ||
           character == '<' || !IsAscii(character);
}

/// Whether it could end a script element, or a line of a script.
bool IsUnsafeInScript(char32_t codePoint) {
    return codePoint == '<' || codePoint == 0x2028 || codePoint == 0x2029;
}

}  // namespace

JsonWriter::JsonWriter(TextSink sink, Style style, ByteProgress progress)
    : sink_(std::move(sink)), style_(style), progress_(std::move(progress)) {}

void JsonWriter::Key(std::string_view key) {
    Item();
    Quoted(key);
    Append(style_.layout == Layout::Indented ? ": " : ":");
}

void JsonWriter::Item() {
    if (!isFirst_) {
        Append(",");
    }
    isFirst_ = false;
    NewLine();
}

void JsonWriter::Quoted(std::string_view text) {
    Append("\"");
    Append(text);
    Append("\"");
}

void JsonWriter::Text(std::string_view text) {
    Append("\"");
    while (!text.empty()) {
        text.remove_prefix(AppendPlain(text.substr(0, kPieceSize)));
        if (!text.empty() && IsSpecial(text.front())) {
            text.remove_prefix(AppendSpecial(text));
        }
    }
    Append("\"");
}

void JsonWriter::Bytes(const kelcore::byte* data, std::size_t size) {
    Append("\"");
    for (std::size_t at = 0; at < size; at += kPieceSize) {
        std::string piece =
            kelcore::EncodeBinaryDataToUTF8String(data + at, std::min(kPieceSize, size - at));
        std::erase(piece, '\n');
        Append(piece);
    }
    Append("\"");
}

void JsonWriter::Finish(std::string_view end) {
    Append(end);
    HandOn();
}

void JsonWriter::Begin(char bracket) {
    Append({&bracket, 1});
    ++depth_;
    isFirst_ = true;
}

void JsonWriter::End(char bracket) {
    --depth_;
    if (!isFirst_) {
        NewLine();
    }
    isFirst_ = false;
    Append({&bracket, 1});
}

void JsonWriter::NewLine() {
    if (style_.layout == Layout::Indented) {
        Append("\n");
        block_.append(depth_ * kIndent, ' ');
    }
}

std::size_t JsonWriter::AppendPlain(std::string_view text) {
    const auto size =
        static_cast<std::size_t>(std::ranges::find_if(text, IsSpecial) - text.begin());
    Append(text.substr(0, size));
    return size;
}

std::size_t JsonWriter::AppendSpecial(std::string_view text) {
    if (IsAscii(text.front()) && text.front() != '<') {
        Append(EscapeOf(text.front()));
        return 1;
    }
    const kelcore::unicode::Utf8Part part = kelcore::unicode::FirstPart(text);
    if (!part.wellFormed) {
        Append(kReplacementCharacter);
    } else if (NeedsEscape(part.codePoint)) {
        Append(UnicodeEscape(part.codePoint));
    } else {
        Append(text.substr(0, part.length));
    }
    return part.length;
}

bool JsonWriter::NeedsEscape(char32_t codePoint) const {
    return kelcore::unicode::IsSurrogate(codePoint) ||
           (style_.isInScript && IsUnsafeInScript(codePoint));
}

void JsonWriter::Append(std::string_view text) {
    block_ += text;
    if (block_.size() >= kBlockSize) {
        HandOn();
    }
}

void JsonWriter::HandOn() {
    if (block_.empty()) {
        return;
    }
    sink_(block_);
    handedOn_ += block_.size();
    block_.clear();
    if (progress_) {
        progress_(handedOn_);
    }
}

}  // namespace orvo::json
