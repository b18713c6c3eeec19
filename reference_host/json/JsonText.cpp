#include "reference_host/json/JsonText.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "reference_host/json/LoneSurrogates.h"
#include "reference_host/json/SessionJson.h"

namespace refhost {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Whether a character of UTF-8 begins with it.
bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

TextPlace PlaceOf(std::string_view text, std::size_t offset) {
    std::string_view before = text.substr(0, offset);
    if (before.starts_with(kByteOrderMark)) {
        before.remove_prefix(kByteOrderMark.size());
    }
    const std::string_view line = before.substr(before.rfind('\n') + 1);
    const auto lineEnds = std::count(before.begin(), before.end(), '\n');
    const auto characters = std::count_if(line.begin(), line.end(), BeginsCharacter);
    return {1 + static_cast<std::size_t>(lineEnds), 1 + static_cast<std::size_t>(characters)};
}

/// What the library says of a marked text, without the name of its own error and without the place,
/// which it counts in bytes. It may quote a text or number of any length.
std::string Told(std::string_view message) {
    constexpr std::size_t kLongest = 300;
    const std::size_t place = message.find(", column ");
    const std::size_t front =
        place == message.npos ? message.find("] ") : message.find(": ", place);
    message.remove_prefix(front == message.npos ? 0 : front + 2);
    return Shortened(UnmarkedDocument(message), kLongest);
}

/// Makes the values. The library's own maker, when it is asked to report keys, looks at all that an
/// object or a list holds again after each object in it; and it lets keys stand twice.
class ValueMaker final : public nlohmann::json_sax<ParsedJson> {
public:
    /// @param text  as it was before the marks
    explicit ValueMaker(std::string_view text) : text_(text) {}

    ParsedJson Take() { return std::move(root_); }

    bool null() override { return Put(nullptr); }
    bool boolean(bool value) override { return Put(value); }
    bool number_integer(number_integer_t value) override { return Put(value); }
    bool number_unsigned(number_unsigned_t value) override { return Put(value); }
    bool number_float(number_float_t value, const string_t&) override { return Put(value); }
    bool string(string_t& value) override { return Put(std::move(value)); }
    bool binary(binary_t& value) override { return Put(std::move(value)); }

    bool start_object(std::size_t) override { return Open(ParsedJson::object()); }
    bool start_array(std::size_t) override { return Open(ParsedJson::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& key) override {
        Level& level = open_.back();
        const auto [member, isNew] = level.value->emplace(std::move(key), nullptr);
        level.key = &member.key();
        if (!isNew) {
            throw JsonError(Pointer() + ": this key stands twice; remove one of the two");
        }
        member_ = &*member;
        return true;
    }

    bool parse_error(std::size_t position, const std::string&,
                     const ParsedJson::exception& error) override {
        const std::size_t offset = position - std::min<std::size_t>(position, 1);
        throw JsonError(Told(error.what()) + "; correct the text there",
                        PlaceOf(text_, UnmarkedOffset(text_, offset)));
    }

private:
    /// An object or a list that has not ended, and where the current one of its values is.
    struct Level {
        ParsedJson* value;
        const std::string* key = nullptr;
    };

    bool Put(ParsedJson value) {
        if (open_.empty()) {
            root_ = std::move(value);
            member_ = &root_;
        } else if (ParsedJson& parent = *open_.back().value; parent.is_array()) {
            parent.push_back(std::move(value));
            member_ = &parent.back();
        } else {
            *member_ = std::move(value);
        }
        return true;
    }

    bool Open(ParsedJson value) {
        Put(std::move(value));
        open_.push_back({member_});
        return true;
    }

    bool Close() {
        open_.pop_back();
        return true;
    }

    std::string Pointer() const {
        std::string pointer;
        for (const Level& level : open_) {
            pointer += level.value->is_array() ? "/" + std::to_string(level.value->size() - 1)
                                               : PointerStep(*level.key);
        }
        return pointer;
    }

    std::string_view text_;
    ParsedJson root_;
    std::vector<Level> open_;
    ParsedJson* member_ = nullptr;  // the value that was put last, or whose key was read last
};

}  // namespace

ParsedJson ParseJson(std::string_view text) {
    // The library would take it for the end.
    const std::size_t nul = text.find('\0');
    if (nul != text.npos) {
        throw JsonError("a NUL character; remove it", PlaceOf(text, nul));
    }
    const std::string marked = MarkedDocument(text);
    ValueMaker maker(text);
    ParsedJson::sax_parse(marked, &maker);
    return maker.Take();
}

std::string Shortened(std::string text, std::size_t size) {
    if (text.size() > size) {
        while (size > 0 && !BeginsCharacter(text[size])) {
            --size;
        }
        text.replace(size, text.npos, "...");
    }
    return text;
}

}  // namespace refhost
