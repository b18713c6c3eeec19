#include "toolkit/scan/DocumentEncoding.h"

#include <algorithm>
#include <memory>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>

#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Unicode.h"
#include "toolkit/TextPlaces.h"
#include "toolkit/scan/LibraryUse.h"

namespace toolkit {
namespace {

constexpr char16_t kNoCharacter = 0xFFFD;

/// Null if the parser has no decoder of that name.
std::unique_ptr<xercesc::XMLTranscoder> MakeDecoder(const std::string& name) {
    constexpr XMLSize_t kBlockSize = 64;
    xercesc::XMLTransService::Codes failure{};
    return std::unique_ptr<xercesc::XMLTranscoder>(
        xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(
            kelcore::AsciiToUTF16(name).c_str(), failure, kBlockSize));
}

/// `kNoCharacter` if the byte does not stand for one unit alone.
char16_t Decode(xercesc::XMLTranscoder& decoder, XMLByte byte) {
    std::array<XMLCh, 4> units{};
    std::array<unsigned char, 4> sizes{};
    XMLSize_t used = 0;
    try {
        const XMLSize_t count =
            decoder.transcodeFrom(&byte, 1, units.data(), units.size(), used, sizes.data());
        return count == 1 && used == 1 ? units[0] : kNoCharacter;
    } catch (const xercesc::XMLException&) {
        return kNoCharacter;
    }
}

}  // namespace

std::optional<DocumentEncoding> DocumentEncoding::Of(std::string_view document) {
    DocumentEncoding encoding(kelcore::RecogniseTextUnits(document));
    if (encoding.units_.size == 1 && !StatesUtf8(document)) {
        encoding.table_ = MakeTable(StatedInDeclaration(document, "encoding"));
        if (!encoding.table_) {
            return std::nullopt;
        }
    }
    return encoding;
}

std::optional<DocumentEncoding::Table> DocumentEncoding::MakeTable(const std::string& name) {
    const LibraryUse library;
    const std::unique_ptr<xercesc::XMLTranscoder> decoder = MakeDecoder(name);
    if (decoder == nullptr) {
        return std::nullopt;
    }
    Table table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte] = toolkit::Decode(*decoder, static_cast<XMLByte>(byte));
    }
    return table;
}

std::u16string DocumentEncoding::Decode(std::string_view bytes) const {
    if (units_.size != 1) {
        return DecodeWide(bytes);
    }
    if (!table_) {
        return kelcore::UTF8to16(bytes);
    }
    std::u16string text;
    for (const char byte : bytes) {
        text += (*table_)[static_cast<unsigned char>(byte)];
    }
    return text;
}

bool DocumentEncoding::CanEncode(char32_t character) const {
    return !table_ ||
           (character < kNoCharacter &&
            std::ranges::find(*table_, static_cast<char16_t>(character)) != table_->end());
}

std::string DocumentEncoding::Encode(std::u16string_view text) const {
    return units_.size != 1 ? EncodeWide(text)
           : table_         ? EncodeByTable(text)
                            : kelcore::UTF16to8(text);
}

std::u16string DocumentEncoding::DecodeWide(std::string_view bytes) const {
    std::u16string text;
    for (; bytes.size() >= units_.size; bytes.remove_prefix(units_.size)) {
        char32_t unit = 0;
        for (std::size_t i = 0; i < units_.size; ++i) {
            const std::size_t place = units_.littleEndian ? units_.size - 1 - i : i;
            unit = unit << 8 | static_cast<unsigned char>(bytes[place]);
        }
        kelcore::unicode::AppendUtf16(text, unit);
    }
    return text;
}

std::string DocumentEncoding::EncodeWide(std::u16string_view text) const {
    std::string bytes;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t unit =
            units_.size == 2 ? text[i++] : kelcore::unicode::NextCodePoint(text, i);
        for (std::size_t byte = 0; byte < units_.size; ++byte) {
            const std::size_t place = units_.littleEndian ? byte : units_.size - 1 - byte;
            bytes += static_cast<char>(unit >> (8 * place) & 0xFF);
        }
    }
    return bytes;
}

std::string DocumentEncoding::EncodeByTable(std::u16string_view text) const {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(std::ranges::find(*table_, unit) - table_->begin());
    }
    return bytes;
}

}  // namespace toolkit
