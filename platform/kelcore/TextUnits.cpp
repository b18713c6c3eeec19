#include "platform/kelcore/TextUnits.h"

#include "platform/kelcore/Types.h"

namespace kelcore {
namespace {

using namespace std::string_view_literals;

struct Beginning {
    std::string_view bytes;
    TextUnits units;
};

// Byte order marks, and how "<" looks at the beginning of a document without one.
constexpr Beginning kBeginnings[] = {
    {"\x00\x00\xFE\xFF"sv, {4, false, 4}},
    {"\xFF\xFE\x00\x00"sv, {4, true, 4}},
    {"\x00\x00\x00<"sv, {4, false, 0}},
    {"<\x00\x00\x00"sv, {4, true, 0}},
    {"\xFE\xFF"sv, {2, false, 2}},
    {"\xFF\xFE"sv, {2, true, 2}},
    {"\x00<"sv, {2, false, 0}},
    {"<\x00"sv, {2, true, 0}},
    {kUtf8Mark, {1, false, kUtf8Mark.size()}},
};

char MarkupUnit(std::string_view unit, bool littleEndian) {
    uint32 value = 0;
    for (std::size_t i = 0; i < unit.size(); ++i) {
        const std::size_t place = littleEndian ? unit.size() - 1 - i : i;
        value = value << 8 | static_cast<unsigned char>(unit[place]);
    }
    return value < 0x80 ? static_cast<char>(value) : value <= 0xFFFF ? '\xE0' : '\xF0';
}

}  // namespace

TextUnits RecogniseTextUnits(std::string_view begin) {
    for (const Beginning& beginning : kBeginnings) {
        if (begin.starts_with(beginning.bytes)) {
            return beginning.units;
        }
    }
    return {};
}

std::string MarkupOf(std::string_view bytes, TextUnits units) {
    if (units.size == 1) {
        return std::string(bytes);
    }
    std::string markup;
    markup.reserve(bytes.size() / units.size);
    for (std::size_t i = 0; i + units.size <= bytes.size(); i += units.size) {
        markup.push_back(MarkupUnit(bytes.substr(i, units.size), units.littleEndian));
    }
    return markup;
}

}  // namespace kelcore
