#include "toolkit/scan/MarkupReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "format/CarriableText.h"
#include "format/Limits.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/TextUnits.h"
#include "toolkit/TextPlaces.h"
#include "toolkit/scan/Values.h"

namespace toolkit {
namespace {

using tses::TextPlace;

constexpr auto kMore = std::string_view::npos;  // the end of a piece is not there yet

bool IsAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char byte : text) {
        bits |= static_cast<unsigned char>(byte);
    }
    return bits < 0x80;
}

bool IsSpace(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

/// Whether each byte stands for the character of its value.
using Plain = std::array<bool, 256>;

consteval Plain PlainBut(std::string_view characters) {
    Plain isPlain{};
    std::fill_n(isPlain.begin(), 128, true);
    for (const char character : characters) {
        isPlain[static_cast<unsigned char>(character)] = false;
    }
    return isPlain;
}

const Plain& PlainIn(TextPlace place) {
    static constexpr Plain kInText = PlainBut("&\r");
    static constexpr Plain kInAttributes = PlainBut("&\r\n\t");
    static constexpr Plain kInSections = PlainBut("\r");
    return place == TextPlace::Text        ? kInText
           : place == TextPlace::Attribute ? kInAttributes
                                           : kInSections;
}

/// A document's bytes from some place on, of which more come when they are needed.
class Window {
public:
    explicit Window(const NextBytes& next) : next_(next) { Grow(); }

    std::string_view Rest() const { return std::string_view(bytes_).substr(at_); }
    void Skip(std::size_t size) { at_ += size; }

    /// Returns false at the end of the document.
    bool Grow() {
        const std::string_view more = next_();
        bytes_.erase(0, at_);
        at_ = 0;
        bytes_ += more;
        return !more.empty();
    }

private:
    const NextBytes& next_;
    std::string bytes_;
    std::size_t at_ = 0;
};

/// Texts of one tag, decoded into memory that the next tag uses again.
class Texts {
public:
    void Clear(std::size_t room) {
        units_.clear();
        units_.reserve(room);  // views into it stay valid
    }

    std::u16string_view Append(std::string_view ascii) {
        const std::size_t begin = units_.size();
        units_.insert(units_.end(), ascii.begin(), ascii.end());
        return From(begin);
    }

    std::u16string_view AppendValue(std::string_view spelled, TextPlace place) {
        const Plain& isPlain = PlainIn(place);
        if (std::ranges::all_of(spelled, [&isPlain](char byte) {
                return isPlain[static_cast<unsigned char>(byte)];
            })) {
            return Append(spelled);
        }
        const std::size_t begin = units_.size();
        const std::u16string value =
            ReadValue(kelcore::UTF8to16(spelled), place, tses::XmlVersion::V1_0);
        units_.insert(units_.end(), value.begin(), value.end());
        return From(begin);
    }

private:
    std::u16string_view From(std::size_t begin) const {
        return {units_.data() + begin, units_.size() - begin};
    }

    std::vector<char16_t> units_;
};

class MarkupReader {
public:
    MarkupReader(const NextBytes& next, MarkupHandler& handler)
        : window_(next), handler_(handler) {}

    bool Run() {
        if (!IsPlain()) {
            return false;
        }
        do {
            while (ReadPiece()) {
            }
        } while (!failed_ && window_.Rest().size() <= kLongestPiece && window_.Grow());
        return !failed_ && hasRoot_ && depth_ == 0 && std::ranges::all_of(window_.Rest(), IsSpace);
    }

private:
    static constexpr std::size_t kLongestPiece = tses::limits::kSectionBytes;

    /// Whether the document is in UTF-8 and XML 1.0. Skips a byte order mark.
    bool IsPlain() {
        while (window_.Rest().find('>') == kMore && window_.Rest().size() <= kLongestPiece &&
               window_.Grow()) {
        }
        const kelcore::TextUnits units = kelcore::RecogniseTextUnits(window_.Rest());
        window_.Skip(units.markSize);
        const std::string_view begin = window_.Rest();
        const std::string version = StatedInDeclaration(begin, "version");
        return units.size == 1 && !begin.starts_with(kelcore::kEbcdicLess) && StatesUtf8(begin) &&
               (version.empty() || version == "1.0");
    }

    /// Reads a text or a piece of markup. Returns false if there is none that is complete.
    bool ReadPiece() {
        const std::string_view rest = window_.Rest();
        if (failed_ || rest.empty()) {
            return false;
        }
        const std::size_t size = rest.front() == '<' ? ReadMarkupIn(rest) : ReadText(rest);
        if (size == kMore || failed_) {
            return false;
        }
        window_.Skip(size);
        return true;
    }

    // These return the size of the piece.

    std::size_t ReadText(std::string_view rest) {
        const std::size_t size = rest.find('<');
        if (size == kMore) {
            return kMore;
        }
        const std::string_view text = rest.substr(0, size);
        if (depth_ != 0) {
            texts_.Clear(size);
            handler_.Characters(texts_.AppendValue(text, TextPlace::Text));
        } else {
            failed_ = !std::ranges::all_of(text, IsSpace);
        }
        return size;
    }

    std::size_t ReadMarkupIn(std::string_view rest) {
        constexpr std::size_t kTelling = 9;  // "<![CDATA["
        if (rest.size() < kTelling && rest.find('>') == kMore) {
            return kMore;
        }
        switch (rest[1]) {
            case '?':
                return Behind(rest, "?>", 2);
            case '!':
                return ReadDeclaration(rest);
            case '/':
                return ReadEndTag(rest);
            default:
                return ReadStartTag(rest);
        }
    }

    std::size_t ReadDeclaration(std::string_view rest) {
        if (rest.starts_with("<!--")) {
            return Behind(rest, "-->", 4);
        }
        if (!rest.starts_with(kSectionBegin)) {
            failed_ = true;  // a document type
            return kMore;
        }
        const std::size_t size = Behind(rest, kSectionEnd, kSectionBegin.size());
        if (size != kMore) {
            const std::string_view text =
                rest.substr(kSectionBegin.size(), size - kSectionBegin.size() - kSectionEnd.size());
            texts_.Clear(text.size());
            handler_.Characters(texts_.AppendValue(text, TextPlace::Section));
        }
        return size;
    }

    std::size_t ReadEndTag(std::string_view rest) {
        const std::size_t size = Behind(rest, ">", 2);
        if (size != kMore) {
            failed_ = depth_ == 0;
            if (!failed_) {
                --depth_;
                handler_.EndElement();
            }
        }
        return size;
    }

    std::size_t ReadStartTag(std::string_view rest) {
        const std::size_t size = SizeOfTag(rest);
        failed_ = std::min(size, rest.size()) > tses::limits::kTagBytes;
        if (size == kMore || failed_) {
            return kMore;
        }
        const bool isEmptyTag = rest[size - 2] == '/';
        StartElement(rest.substr(1, size - (isEmptyTag ? 3 : 2)));
        if (!failed_) {
            hasRoot_ = true;
            ++depth_;
        }
        if (!failed_ && isEmptyTag) {
            --depth_;
            handler_.EndElement();
        }
        return size;
    }

    /// Up to the ">" behind the values, which may contain one.
    static std::size_t SizeOfTag(std::string_view rest) {
        for (std::size_t at = 1; at < rest.size(); ++at) {
            const char byte = rest[at];
            if (byte == '>') {
                return at + 1;
            }
            if (byte == '"' || byte == '\'') {
                at = rest.find(byte, at + 1);
                if (at == kMore) {
                    return kMore;
                }
            }
        }
        return kMore;
    }

    /// @param tag  without its angle brackets
    void StartElement(std::string_view tag) {
        texts_.Clear(tag.size());
        attributes_.clear();
        const std::string_view name = TakeName(tag);
        while (!failed_ && SkipSpace(tag)) {
            TakeAttribute(tag);
        }
        failed_ = failed_ || name.empty() || (hasRoot_ && depth_ == 0);
        if (!failed_) {
            const std::u16string_view units = texts_.Append(name.substr(name.find(':') + 1));
            handler_.StartElement(units, ScannedAttributes(attributes_));
        }
    }

    /// Returns whether there is more than space.
    static bool SkipSpace(std::string_view& tag) {
        const auto end = std::ranges::find_if_not(tag, IsSpace);
        tag.remove_prefix(static_cast<std::size_t>(end - tag.begin()));
        return !tag.empty();
    }

    std::string_view TakeName(std::string_view& tag) {
        std::size_t size = 0;
        while (size < tag.size() && !IsSpace(tag[size]) && tag[size] != '=') {
            ++size;
        }
        const std::string_view name = tag.substr(0, size);
        failed_ = failed_ || !IsAscii(name);
        tag.remove_prefix(size);
        return name;
    }

    void TakeAttribute(std::string_view& tag) {
        const std::string_view name = TakeName(tag);
        SkipSpace(tag);
        if (!tag.starts_with('=')) {
            failed_ = true;
            return;
        }
        tag.remove_prefix(1);
        SkipSpace(tag);
        const std::size_t end =
            tag.starts_with('"') || tag.starts_with('\'') ? tag.find(tag.front(), 1) : kMore;
        if (end == kMore) {
            failed_ = true;
            return;
        }
        const std::string_view value = tag.substr(1, end - 1);
        const std::u16string_view units = texts_.Append(name);
        attributes_.emplace_back(units, texts_.AppendValue(value, TextPlace::Attribute));
        tag.remove_prefix(end + 1);
    }

    static std::size_t Behind(std::string_view rest, std::string_view mark, std::size_t from) {
        const std::size_t found = rest.find(mark, from);
        return found == kMore ? kMore : found + mark.size();
    }

    Window window_;
    MarkupHandler& handler_;
    Texts texts_;
    std::vector<ScannedAttribute> attributes_;
    std::size_t depth_ = 0;
    bool hasRoot_ = false;
    bool failed_ = false;
};

}  // namespace

bool ReadMarkup(const NextBytes& next, MarkupHandler& handler) {
    return MarkupReader(next, handler).Run();
}

}  // namespace toolkit
