#include "plugin/xml/ParserEncoding.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/kelcore/Unicode.h"

namespace tses {
namespace {

using xercesc::XMLTranscoder;
using xercesc::XMLUni;

/// What decoders return for bytes that encode no character.
constexpr char16_t kNoCharacter = 0xFFFD;

std::u16string Capitals(std::u16string_view name) {
    std::u16string capitals(name);
    std::ranges::transform(capitals, capitals.begin(), [](char16_t letter) {
        return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - u'a' + u'A')
                                                : letter;
    });
    return capitals;
}

/// "UTF-8", "utf8", "UTF_8": names of one encoding differ in letter case and in these signs.
bool IsUtf8(std::u16string_view name) {
    std::u16string letters = Capitals(name);
    std::erase_if(letters, [](char16_t letter) { return letter == u'-' || letter == u'_'; });
    return letters == u"UTF8";
}

struct WideName {
    const char16_t* name;
    std::size_t unitSize;
    bool littleEndian;
};

/// Whether the encoding has units of the size and byte order that `units` says. Accepts only the
/// parser's own names: other decoders may look for a byte order mark again after the declaration.
bool IsWideAs(std::u16string_view name, kelcore::TextUnits units) {
    // These leave the order open. The parser keeps the order and the size that it found.
    const char16_t* const kAsFound[] = {
        XMLUni::fgUTF16EncodingString,  XMLUni::fgUTF16EncodingString2,
        XMLUni::fgUTF16EncodingString3, XMLUni::fgUTF16EncodingString4,
        XMLUni::fgUTF16EncodingString5, XMLUni::fgUTF16EncodingString6,
        XMLUni::fgUTF16EncodingString7, XMLUni::fgUCS4EncodingString,
        XMLUni::fgUCS4EncodingString2,  XMLUni::fgUCS4EncodingString3,
        XMLUni::fgUCS4EncodingString4,  XMLUni::fgUCS4EncodingString5,
    };
    const WideName kOrdered[] = {
        {XMLUni::fgUTF16LEncodingString, 2, true},  {XMLUni::fgUTF16LEncodingString2, 2, true},
        {XMLUni::fgUTF16BEncodingString, 2, false}, {XMLUni::fgUTF16BEncodingString2, 2, false},
        {XMLUni::fgUCS4LEncodingString, 4, true},   {XMLUni::fgUCS4LEncodingString2, 4, true},
        {XMLUni::fgUCS4BEncodingString, 4, false},  {XMLUni::fgUCS4BEncodingString2, 4, false},
    };
    const std::u16string capitals = Capitals(name);
    return std::ranges::find(kAsFound, capitals) != std::end(kAsFound) ||
           std::ranges::any_of(kOrdered, [&](const WideName& wide) {
               return capitals == wide.name && units.size == wide.unitSize &&
                      units.littleEndian == wide.littleEndian;
           });
}

/// The parser's decoder of that name; null if it has none.
std::unique_ptr<XMLTranscoder> MakeDecoder(const char16_t* name) {
    constexpr XMLSize_t kBlockSize = 64;
    xercesc::XMLTransService::Codes failure{};
    return std::unique_ptr<XMLTranscoder>(
        xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(
            name, failure, kBlockSize, xercesc::XMLPlatformUtils::fgMemoryManager));
}

/// The single UTF-16 unit that a byte encodes by itself. Empty if it encodes more than one, or
/// nothing without the bytes that follow.
std::optional<char16_t> Decode(XMLTranscoder& decoder, XMLByte byte) {
    std::array<XMLCh, 4> units{};
    std::array<unsigned char, 4> sizes{};
    XMLSize_t used = 0;
    try {
        const XMLSize_t count =
            decoder.transcodeFrom(&byte, 1, units.data(), units.size(), used, sizes.data());
        return count == 1 && used == 1 ? std::optional(units[0]) : std::nullopt;
    } catch (const xercesc::XMLException&) {
        return kNoCharacter;  // the parser stops at such a byte
    }
}

bool IsMarkup(char16_t character) {
    return (character >= u' ' && character <= u'~') || character == u'\t' || character == u'\n' ||
           character == u'\r';
}

/// Whether a byte decodes to itself if it is markup, and to neither markup nor a surrogate if not.
bool IsInPlace(XMLTranscoder& decoder, XMLByte byte) {
    const std::optional<char16_t> unit = Decode(decoder, byte);
    return unit && (IsMarkup(byte) ? *unit == byte
                                   : !IsMarkup(*unit) && !kelcore::unicode::IsSurrogate(*unit));
}

/// Goes downwards, so that ASCII comes after every byte that might change its meaning.
bool AreAllInPlace(XMLTranscoder& decoder) {
    constexpr int kLast = 0xFF;
    for (int byte = kLast; byte >= 0; --byte) {
        if (!IsInPlace(decoder, static_cast<XMLByte>(byte))) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool HasMarkupInPlace(const char16_t* name, kelcore::TextUnits units) {
    if (units.size != 1) {
        return IsWideAs(name, units);
    }
    if (IsUtf8(name)) {
        return true;
    }
    const std::unique_ptr<XMLTranscoder> decoder = MakeDecoder(name);
    return decoder != nullptr && AreAllInPlace(*decoder);
}

}  // namespace tses
