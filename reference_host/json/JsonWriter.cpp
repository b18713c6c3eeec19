#include "reference_host/json/JsonWriter.h"

#include <algorithm>
#include <utility>

#include "platform/kelcore/BinaryText.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Unicode.h"
#include "reference_host/json/LoneSurrogates.h"

namespace refhost {
namespace {

constexpr std::size_t kBlockSize = 64 * 1024;
constexpr std::size_t kIndent = 2;

/// Long texts and blocks of bytes are encoded in pieces. Base64 has no padding inside where a
/// piece is a multiple of three bytes.
constexpr std::size_t kPieceSize = 24 * 1024;
static_assert(kPieceSize % 3 == 0);

/// The first of the three bytes that `UTF16to8` writes of an unpaired surrogate. Other characters
/// begin with it too.
constexpr char kSurrogateLead = '\xED';
constexpr std::size_t kSurrogateSize = 3;

bool BeginsWithSurrogate(std::string_view bytes) {
    return bytes.size() >= kSurrogateSize && bytes[0] == kSurrogateLead &&
           static_cast<unsigned char>(bytes[1]) >= 0xA0;
}

/// What a special character becomes that begins no surrogate.
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
        case kSurrogateLead:
            return {character};
        default:
            return UnicodeEscape(static_cast<unsigned char>(character));
    }
}

std::string SurrogateEscape(std::string_view bytes) {
    const auto second = static_cast<unsigned char>(bytes[1]);
    const auto third = static_cast<unsigned char>(bytes[2]);
    return UnicodeEscape(0xD000U + (second % 64U) * 64U + third % 64U);
}

/// Whether it needs a closer look: it needs an escape or may begin a surrogate.
bool IsSpecial(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\' ||
           character == kSurrogateLead;
}

}  // namespace

JsonWriter::JsonWriter(JsonSink sink, Layout layout, ByteProgress progress)
    : sink_(std::move(sink)), layout_(layout), progress_(std::move(progress)) {}

void JsonWriter::Key(std::string_view key) {
    Item();
    Quoted(key);
    Append(layout_ == Layout::Indented ? ": " : ":");
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

void JsonWriter::Text(std::u16string_view text) {
    Append("\"");
    while (!text.empty()) {
        std::size_t size = std::min(text.size(), kPieceSize);
        if (size < text.size() && kelcore::unicode::IsHighSurrogate(text[size - 1])) {
            --size;
        }
        AppendEscaped(kelcore::UTF16to8(text.substr(0, size)));
        text.remove_prefix(size);
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
    if (layout_ == Layout::Indented) {
        Append("\n");
        block_.append(depth_ * kIndent, ' ');
    }
}

void JsonWriter::AppendEscaped(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto plain = static_cast<std::size_t>(
            std::find_if(bytes.begin(), bytes.end(), IsSpecial) - bytes.begin());
        Append(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        if (BeginsWithSurrogate(bytes)) {
            Append(SurrogateEscape(bytes));
            bytes.remove_prefix(kSurrogateSize);
        } else if (!bytes.empty()) {
            Append(EscapeOf(bytes[0]));
            bytes.remove_prefix(1);
        }
    }
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

}  // namespace refhost
