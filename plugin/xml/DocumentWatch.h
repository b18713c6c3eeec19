#pragma once

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/kelcore/Types.h"
#include "plugin/xml/DistinctNames.h"
#include "plugin/xml/DocumentEncoding.h"
#include "plugin/xml/MarkupTracker.h"

namespace tses {

/// Watches what a parse takes from its file and is told of, and refuses a document that goes beyond
/// the limits of `format/Limits.h`, is malformed or damaged in a way that the parser lets pass, or
/// changes while it is read.
///
/// The parser tells of a thing when all of it is built, so lengths are watched where its bytes are
/// handed over: only what goes on for long without an event is looked at more closely. The parser
/// takes blocks of 48 KiB, so that a thing may exceed its limit by two of them before it is
/// refused; nothing within its limit ever is.
class DocumentWatch {
public:
    /// Called with the reason, which begins with "refused: " to tell it from what the parser says,
    /// and with the place where it is not the parser's own; must throw.
    using Refuse =
        std::function<void(std::u16string_view reason, std::optional<DocumentPlace> place)>;

    explicit DocumentWatch(Refuse refuse) : refuse_(std::move(refuse)) {}

    /// A parse begins.
    void Begin();

    /// The regular file behind `descriptor` is what is parsed; it stays open until the end.
    void Opened(int descriptor, const struct stat& status);
    bool HasOpenedFile() const noexcept { return descriptor_ >= 0; }

    /// The parser was handed the file's next bytes; none at the end.
    void Received(const unsigned char* bytes, std::size_t size);

    /// The parser told of something.
    void SawEvent() noexcept { lastEvent_ = received_; }
    void SawElementName(std::u16string_view qualifiedName);
    void BeginElement(std::size_t attributeCount);
    void EndElement() noexcept;
    bool HasPrefixes() const noexcept { return prefixes_ != 0; }
    /// Whether the document's encoding can express one half of a pair of surrogates, which the
    /// parser lets pass at the end of an attribute and of a processing instruction. What it tells
    /// of is to be looked at, then.
    bool MayHoldHalfCharacters() const noexcept {
        return hasForeignEncoding_ || encoding_.unitSize != 1;
    }
    void CheckCharacters(std::u16string_view text);
    void BeginPrefix(std::u16string_view prefix, std::u16string_view uri);
    void EndPrefix() noexcept;
    void SawStartOfDocument();
    /// The parser reads the document in `encoding` from behind its XML declaration on. What was
    /// declared may be another: the parser passes over some names that the bytes belie.
    void SawXmlDeclaration(const char16_t* encoding);
    void SawDocumentType();
    void SawEndOfDocument();

private:
    void LookForDocumentType();
    void CheckDocumentType();
    void CheckGrowth();
    void CheckName(std::u16string_view name);
    void CheckLength();
    void CheckLengthOfTag(kelcore::uint64 used);
    void CountAssignments(const unsigned char* bytes, std::size_t size);
    void LookForNul(const unsigned char* bytes, std::size_t size);
    void KeepTail(const unsigned char* bytes, std::size_t size);

    Refuse refuse_;
    int descriptor_ = -1;
    struct stat opened_ {};
    DocumentEncoding encoding_;
    std::optional<MarkupTracker> markup_;
    kelcore::uint64 received_ = 0;
    kelcore::uint64 lastEvent_ = 0;  // what was received when it came
    std::size_t assignments_ = 0;    // signs of equality in what goes on for long
    std::size_t zeroBytes_ = 0;      // in the unit that the next byte belongs to
    bool started_ = false;
    bool foundRoot_ = false;
    bool hasMalformedVersion_ = false;
    bool hasForeignEncoding_ = false;
    std::optional<DocumentPlace> documentType_;
    bool sawNul_ = false;
    std::string tail_;  // the last bytes received
    std::size_t depth_ = 0;
    std::size_t prefixes_ = 0;
    DistinctNames elementNames_;
    DistinctNames prefixNames_;
    DistinctNames uris_;
};

}  // namespace tses
