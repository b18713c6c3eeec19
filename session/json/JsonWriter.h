#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <orvo/Json.h>
#include "platform/kelcore/Types.h"

namespace orvo::json {

/// Writes JSON in blocks, holding only one. The caller keeps the order: `Key` before each value of
/// an object, `Item` before each element of a list.
class JsonWriter {
public:
    enum class Layout {
        Indented,  ///< by two blanks, a line each
        Compact    ///< on one line, without blanks
    };

    struct Style {
        Layout layout = Layout::Indented;
        bool isFull = false;  ///< keys at their default are written too
        /// A text may stand in a script element of HTML: `<`, U+2028 and U+2029 become escapes.
        bool isInScript = false;
    };

    JsonWriter(TextSink sink, Style style, ByteProgress progress = {});

    bool IsFull() const { return style_.isFull; }

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginList() { Begin('['); }
    void EndList() { End(']'); }

    /// @param key  needs no escapes
    void Key(std::string_view key);
    void Item();

    /// A number, `true`, `false` or `null`, as it is to stand.
    void Plain(std::string_view text) { Append(text); }

    /// A text that needs no escapes.
    void Quoted(std::string_view text);

    /// UTF-8. Writes an unpaired surrogate, which has three bytes, as its escape, and any other
    /// malformed sequence as U+FFFD.
    void Text(std::string_view text);

    /// In Base64.
    void Bytes(const kelcore::byte* data, std::size_t size);

    /// Passes the last block to the sink.
    void Finish(std::string_view end = {});

private:
    void Begin(char bracket);
    void End(char bracket);
    void NewLine();
    void Append(std::string_view text);
    /// Both return how many bytes of the text they took.
    std::size_t AppendPlain(std::string_view text);
    std::size_t AppendSpecial(std::string_view text);
    bool NeedsEscape(char32_t codePoint) const;

    void HandOn();

    TextSink sink_;
    Style style_;
    ByteProgress progress_;
    std::string block_;
    kelcore::uint64 handedOn_ = 0;
    std::size_t depth_ = 0;
    bool isFirst_ = true;  // of its object or list
};

}  // namespace orvo::json
