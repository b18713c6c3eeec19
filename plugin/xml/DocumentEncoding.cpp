#include "plugin/xml/DocumentEncoding.h"

#include <string_view>

#include "platform/kelcore/Types.h"

namespace tses {
namespace {

using namespace std::string_view_literals;

struct Beginning {
    std::string_view bytes;
    DocumentEncoding encoding;
};

// Byte order marks, and how "<" or "<?" looks at the beginning of a document without one.
constexpr Beginning kBeginnings[] = {
    {"\x00\x00\xFE\xFF"sv, {4, false, 4}}, {"\xFF\xFE\x00\x00"sv, {4, true, 4}},
    {"\x00\x00\x00<"sv, {4, false, 0}},    {"<\x00\x00\x00"sv, {4, true, 0}},
    {"\xFE\xFF"sv, {2, false, 2}},         {"\xFF\xFE"sv, {2, true, 2}},
    {"\x00<\x00?"sv, {2, false, 0}},       {"<\x00?\x00"sv, {2, true, 0}},
    {"\xEF\xBB\xBF"sv, {1, false, 3}},
};

char MarkupUnit(const unsigned char* unit, DocumentEncoding encoding) {
    kelcore::uint32 value = 0;
    for (std::size_t i = 0; i < encoding.unitSize; ++i) {
        const std::size_t place = encoding.littleEndian ? encoding.unitSize - 1 - i : i;
        value = value << 8 | unit[place];
    }
    return value < 0x80 ? static_cast<char>(value) : value <= 0xFFFF ? '\xE0' : '\xF0';
}

}  // namespace

DocumentEncoding RecogniseEncoding(const unsigned char* bytes, std::size_t size) {
    const std::string_view document(reinterpret_cast<const char*>(bytes), size);
    for (const Beginning& beginning : kBeginnings) {
        if (document.starts_with(beginning.bytes)) {
            return beginning.encoding;
        }
    }
    return {};
}

std::string MarkupOf(const unsigned char* bytes, std::size_t size, DocumentEncoding encoding) {
    if (encoding.unitSize == 1) {
        return {reinterpret_cast<const char*>(bytes), size};
    }
    std::string markup;
    markup.reserve(size / encoding.unitSize);
    for (std::size_t i = 0; i + encoding.unitSize <= size; i += encoding.unitSize) {
        markup.push_back(MarkupUnit(bytes + i, encoding));
    }
    return markup;
}

}  // namespace tses
