#include "plugin/xml/DocumentWatch.h"

#include <algorithm>
#include <cstring>

#include "format/Limits.h"
#include "platform/kelcore/Unicode.h"
#include "plugin/xml/ParserEncoding.h"
#include "plugin/xml/XmlDeclaration.h"

namespace tses {
namespace {

bool IsSameContent(const struct stat& before, const struct stat& after) {
    return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

bool WasChanged(int descriptor, const struct stat& before) {
    struct stat after {};
    return ::fstat(descriptor, &after) != 0 || !IsSameContent(before, after);
}

constexpr const char* kWasChanged = "the file was changed while it was read; read it again";
constexpr const char* kHasDocumentType =
    "a session has no document type declaration; remove it to read the file";

std::string TooManyAttributes() {
    return "an element has more than the " + std::to_string(limits::kAttributes) +
           " attributes that one may have";
}

std::string TooMuch(const char* what, kelcore::uint64 bytes, const char* where) {
    return what + (" is longer than the " + limits::InWords(bytes)) + " that one may have" + where;
}

/// More bytes than the parser ever leaves unused when it asks for more.
constexpr kelcore::uint64 kUnusedRest = 256;

/// The bytes of the longest sequence that a UTF-8 decoder may wait for.
constexpr std::size_t kTailSize = 6;

std::size_t SequenceLength(unsigned char lead) {
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : lead < 0xFC ? 5 : kTailSize;
}

/// Whether the text ends within a UTF-8 sequence; the parser drops such an incomplete one. A
/// complete document does not end like this in any encoding.
bool EndsWithinCharacter(std::string_view tail) {
    for (std::size_t length = 1; length <= tail.size(); ++length) {
        const auto byte = static_cast<unsigned char>(tail[tail.size() - length]);
        if (byte >= 0xC0) {
            return length < SequenceLength(byte);
        }
        if (byte < 0x80) {
            return false;
        }
    }
    return false;
}

bool HasHalfCharacter(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        if (kelcore::unicode::IsSurrogate(kelcore::unicode::NextCodePoint(text, i))) {
            return true;
        }
    }
    return false;
}

}  // namespace

void DocumentWatch::Refuse(const std::string& reason, std::optional<DocumentPlace> place) const {
    std::u16string text;
    for (const char character : "refused: " + reason) {  // ASCII
        text += static_cast<char16_t>(character);
    }
    report_(text, place);
}

void DocumentWatch::Begin() {
    descriptor_ = -1;
    opened_ = {};
    units_ = {};
    markup_.reset();
    received_ = 0;
    lastEvent_ = 0;
    zeroBytes_ = 0;
    started_ = false;
    foundRoot_ = false;
    hasMalformedVersion_ = false;
    assignments_ = 0;
    hasForeignEncoding_ = false;
    documentType_.reset();
    sawNul_ = false;
    tail_.clear();
    depth_ = 0;
    prefixes_ = 0;
    elementNames_.Clear();
    prefixNames_.Clear();
    uris_.Clear();
}

void DocumentWatch::Opened(int descriptor, const struct stat& status) {
    descriptor_ = descriptor;
    opened_ = status;
    if (static_cast<kelcore::uint64>(status.st_size) > limits::kFileBytes) {
        Refuse("the file is larger than the " + limits::InWords(limits::kFileBytes) +
                   " that a session may have",
               DocumentPlace());
    }
}

void DocumentWatch::Received(const unsigned char* bytes, std::size_t size) {
    if (received_ == 0) {
        const std::string_view begin(reinterpret_cast<const char*>(bytes), size);
        units_ = kelcore::RecogniseTextUnits(begin);
        markup_.emplace(descriptor_, units_);
        const std::string markup = MarkupOf(begin.substr(units_.markSize), units_);
        hasMalformedVersion_ = HasMalformedVersion(markup);
        hasForeignEncoding_ = markup.starts_with(kelcore::kEbcdicLess);
    }
    CheckLength();
    CountAssignments(bytes, size);
    LookForNul(bytes, size);
    KeepTail(bytes, size);
    received_ += size;
    CheckGrowth();
    LookForDocumentType();
    CheckDocumentType();
}

void DocumentWatch::LookForDocumentType() {
    if (!foundRoot_ && !documentType_) {
        documentType_ = markup_->FindDocumentType(received_);
        foundRoot_ = markup_->FoundRoot();
    }
}

/// A file that grows as fast as it is read would never end. Some file systems report no sizes.
void DocumentWatch::CheckGrowth() {
    const auto size = static_cast<kelcore::uint64>(opened_.st_size);
    if (started_ && size != 0 && received_ > size) {
        Refuse(kWasChanged);
    }
}

/// The first bytes come while the parser makes its reader. It would not clean that up if this
/// threw.
void DocumentWatch::CheckDocumentType() {
    if (started_ && documentType_) {
        Refuse(kHasDocumentType, documentType_);
    }
}

void DocumentWatch::SawStartOfDocument() {
    started_ = true;
    if (hasMalformedVersion_) {
        Refuse("the version in the XML declaration is not a number; a session has 1.0 or 1.1",
               DocumentPlace());
    }
    CheckDocumentType();
}

/// Checks only what came earlier: when the parser asks for more, it has used all of that, except
/// for a rest that may be part of something longer.
void DocumentWatch::CheckLength() {
    const kelcore::uint64 used = received_ - std::min(received_, kUnusedRest);
    const kelcore::uint64 sinceEvent = used - std::min(used, lastEvent_);
    if (hasForeignEncoding_ && sinceEvent > limits::kForeignBytes) {
        Refuse(TooMuch("a tag or a text", limits::kForeignBytes,
                       " in this encoding; save the file as UTF-8"));
    }
    constexpr std::size_t kMostAssignments = limits::kAttributes + limits::kPrefixes;
    if (sinceEvent > limits::kTagBytes ||
        (sinceEvent > limits::kUncountedBytes && assignments_ > kMostAssignments)) {
        CheckLengthOfTag(used);
    }
    if (sinceEvent > limits::kSectionBytes) {
        Refuse(TooMuch("a text", limits::kSectionBytes, " in one piece"));
    }
}

void DocumentWatch::CheckLengthOfTag(kelcore::uint64 used) {
    if (markup_->KindAt(used) != MarkupTracker::Kind::Tag) {
        return;
    }
    if (used - markup_->Begin() > limits::kTagBytes) {
        Refuse(TooMuch("a tag", limits::kTagBytes, ""));
    }
    if (markup_->ValuesInTag() > limits::kAttributes + limits::kPrefixes) {
        Refuse(TooManyAttributes());
    }
}

/// Counts only in what has gone on since the previous block: almost every block of a session brings
/// an event.
void DocumentWatch::CountAssignments(const unsigned char* bytes, std::size_t size) {
    if (lastEvent_ == received_) {
        assignments_ = 0;
    } else {
        assignments_ += static_cast<std::size_t>(std::count(bytes, bytes + size, '='));
    }
}

void DocumentWatch::LookForNul(const unsigned char* bytes, std::size_t size) {
    if (units_.size == 1) {
        sawNul_ = sawNul_ || std::memchr(bytes, 0, size) != nullptr;
        return;
    }
    for (std::size_t i = 0; i < size; ++i) {
        zeroBytes_ += bytes[i] == 0 ? 1 : 0;
        if ((received_ + i + 1) % units_.size == 0) {
            sawNul_ = sawNul_ || zeroBytes_ == units_.size;
            zeroBytes_ = 0;
        }
    }
}

void DocumentWatch::KeepTail(const unsigned char* bytes, std::size_t size) {
    const std::size_t count = std::min(size, kTailSize);
    tail_.append(reinterpret_cast<const char*>(bytes + size - count), count);
    tail_.erase(0, tail_.size() - std::min(tail_.size(), kTailSize));
}

void DocumentWatch::CheckName(std::u16string_view name) {
    if (name.size() > limits::kNameUnits) {
        Refuse("a name is longer than the " + std::to_string(limits::kNameUnits) +
               " characters that one may have");
    }
}

void DocumentWatch::SawElementName(std::u16string_view qualifiedName) {
    CheckName(qualifiedName);
    if (qualifiedName.starts_with(u"xmlns:")) {
        Refuse("the prefix xmlns is not for elements");
    }
    if (!elementNames_.Add(qualifiedName)) {
        Refuse("the document has more than the " + std::to_string(limits::kNames) +
               " names of elements that a session may have");
    }
}

void DocumentWatch::BeginElement(std::size_t attributeCount) {
    SawEvent();
    if (++depth_ > limits::kDepth) {
        Refuse("elements are nested deeper than the " + std::to_string(limits::kDepth) +
               " levels that a session may have");
    }
    if (attributeCount > limits::kAttributes) {
        Refuse(TooManyAttributes());
    }
}

void DocumentWatch::CheckCharacters(std::u16string_view text) {
    if (HasHalfCharacter(text)) {
        Refuse("half of a character stands alone; the file was damaged");
    }
}

void DocumentWatch::EndElement() noexcept {
    SawEvent();
    --depth_;
}

void DocumentWatch::BeginPrefix(std::u16string_view prefix, std::u16string_view uri) {
    if (++prefixes_ > limits::kPrefixes) {
        Refuse("more than the " + std::to_string(limits::kPrefixes) +
               " namespace prefixes that a session may have are in force");
    }
    CheckName(prefix);
    CheckName(uri);
    if (!prefixNames_.Add(prefix) || !uris_.Add(uri)) {
        Refuse("the document has more than the " + std::to_string(limits::kNames) +
               " namespaces that a session may have");
    }
}

void DocumentWatch::EndPrefix() noexcept {
    --prefixes_;
}

void DocumentWatch::SawXmlDeclaration(const char16_t* encoding) {
    hasForeignEncoding_ = hasForeignEncoding_ || !HasMarkupInPlace(encoding, units_);
}

void DocumentWatch::SawDocumentType() {
    Refuse(kHasDocumentType);
}

void DocumentWatch::SawEndOfDocument() {
    if (sawNul_) {
        Refuse("the file holds NUL characters; it was damaged or not completely saved");
    }
    if (received_ % units_.size != 0 || EndsWithinCharacter(tail_)) {
        Refuse("the file ends within a character; it was damaged or not completely saved");
    }
    if (WasChanged(descriptor_, opened_)) {
        Refuse(kWasChanged);
    }
}

}  // namespace tses
