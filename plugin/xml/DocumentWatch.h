#pragma once

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/kelcore/TextUnits.h"
#include "platform/kelcore/Types.h"
#include "plugin/xml/DistinctNames.h"
#include "plugin/xml/MarkupTracker.h"

namespace tses {

/// Watches the bytes and the events of a parse. Refuses a document that exceeds the limits of
/// `format/Limits.h`, is malformed or damaged in a way that the parser lets pass, or changes while
/// it is read.
///
/// The parser reports a tag or a text only when all of it is built. The watch therefore measures
/// lengths as it sees the bytes, and looks more closely only at what goes on for long without an
/// event. The parser takes blocks of 48 KiB, so something may exceed its limit by two blocks before
/// it is refused. Nothing within its limit is ever refused.
class DocumentWatch {
public:
    /// Called with the reason, which begins with "refused: " to tell it from the parser's own
    /// messages, and with the place if it differs from the parser's. Must throw.
    using Report =
        std::function<void(std::u16string_view reason, std::optional<DocumentPlace> place)>;

    explicit DocumentWatch(Report report) : report_(std::move(report)) {}

    /// A parse begins.
    void Begin();

    /// The parse reads the regular file behind `descriptor`, which stays open until the end.
    void Opened(int descriptor, const struct stat& status);
    bool HasOpenedFile() const noexcept { return descriptor_ >= 0; }

    /// The parser got the next bytes of the file; `size` is 0 at the end.
    void Received(const unsigned char* bytes, std::size_t size);

    /// The parser reported something.
    void SawEvent() noexcept { lastEvent_ = received_; }
    void SawElementName(std::u16string_view qualifiedName);
    void BeginElement(std::size_t attributeCount);
    void EndElement() noexcept;
    bool HasPrefixes() const noexcept { return prefixes_ != 0; }
    /// Whether the document's encoding can express half of a surrogate pair, which the parser lets
    /// pass at the end of an attribute and of a processing instruction. If so, pass their texts to
    /// `CheckCharacters`.
    bool MayHoldHalfCharacters() const noexcept { return hasForeignEncoding_ || units_.size != 1; }
    void CheckCharacters(std::u16string_view text);
    void BeginPrefix(std::u16string_view prefix, std::u16string_view uri);
    void EndPrefix() noexcept;
    void SawStartOfDocument();
    /// After the XML declaration, the parser reads the document in `encoding`. The declaration may
    /// name another one: the parser ignores some names that the bytes contradict.
    void SawXmlDeclaration(const char16_t* encoding);
    void SawDocumentType();
    void SawEndOfDocument();

private:
    void Refuse(const std::string& reason, std::optional<DocumentPlace> place = {}) const;
    void LookForDocumentType();
    void CheckDocumentType();
    void CheckGrowth();
    void CheckName(std::u16string_view name);
    void CheckLength();
    void CheckLengthOfTag(kelcore::uint64 used);
    void CountAssignments(const unsigned char* bytes, std::size_t size);
    void LookForNul(const unsigned char* bytes, std::size_t size);
    void KeepTail(const unsigned char* bytes, std::size_t size);

    Report report_;
    int descriptor_ = -1;
    struct stat opened_ {};
    kelcore::TextUnits units_;
    std::optional<MarkupTracker> markup_;
    kelcore::uint64 received_ = 0;
    kelcore::uint64 lastEvent_ = 0;  // how much was received by then
    std::size_t assignments_ = 0;    // "=" signs in what goes on for long
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
