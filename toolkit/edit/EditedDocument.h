#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <orvo/Edit.h>
#include "format/CarriableText.h"
#include "platform/kelcore/Types.h"
#include "toolkit/edit/DocumentIndex.h"
#include "toolkit/scan/DocumentEncoding.h"

namespace toolkit {

/// The content of a session file with changes of its values. What the operations mean, `orvo::Edit`
/// says.
class EditedDocument {
public:
    /// @param content   of a file that can be read
    /// @param encoding  the document's
    EditedDocument(std::string content, const DocumentEncoding& encoding);

    EditedDocument(const EditedDocument&) = delete;
    EditedDocument& operator=(const EditedDocument&) = delete;

    /// Whether every tag can be divided into its parts.
    bool CanBeEdited() const;

    const std::string& Content() const { return content_; }
    const DocumentIndex& Index() const { return index_; }
    const std::vector<ElementExtent>& Elements() const { return index_.Elements(); }

    /// A part of the document as it was, in characters. References are not resolved.
    std::u16string TextOf(Extent extent) const { return encoding_.Decode(BytesOf(extent)); }

    std::u16string Name(std::size_t element) const;
    std::vector<std::u16string> AttributeNames(std::size_t element) const;
    std::optional<std::u16string> Attribute(std::size_t element, std::u16string_view name) const;
    std::u16string Text(std::size_t element) const;

    /// Both return why nothing was changed; empty after success.
    std::string SetAttribute(std::size_t element, std::u16string_view name,
                             std::u16string_view value);
    std::string SetText(std::size_t element, std::u16string_view text);

    std::vector<orvo::Replacement> Replacements() const;

    /// What a part of the document as it was means to a read.
    std::u16string ValueOf(Extent extent, tses::TextPlace place) const;

    /// What puts a value of ASCII characters in the place of a part of the document as it was.
    /// @param quote  around the value of an attribute
    orvo::Replacement ReplaceValue(Extent extent, std::u16string_view value, tses::TextPlace place,
                                   char quote = '"') const;

private:
    /// What is to become of an element.
    struct Change {
        std::vector<std::pair<std::u16string, std::u16string>> attributes;
        std::optional<std::u16string> text;
    };

    Change ChangeOf(std::size_t element) const;
    std::string Take(std::size_t element, Change change);
    std::string ObstacleTo(const ElementExtent& element, const Change& change) const;
    std::string ObstacleInTag(const ElementExtent& element, const Change& change) const;
    std::string ObstacleInText(const ElementExtent& element, const Change& change) const;

    std::string ObstacleOfSize(std::size_t size, kelcore::uint64 limit) const;

    std::string_view BytesOf(Extent extent) const;
    std::optional<AttributeExtent> FindAttribute(const ElementExtent& element,
                                                 std::u16string_view name) const;
    std::u16string OriginalText(const ElementExtent& element) const;
    std::u16string PartOfText(const TextExtent& part) const;
    const TextExtent& TargetOf(const std::vector<TextExtent>& parts) const;
    bool HasElements(std::size_t element) const;

    std::string Encode(std::u16string_view spelled) const;
    std::string SpelledAttribute(std::u16string_view value, char quote) const;
    std::string SpelledText(std::u16string_view text) const;
    bool FitsIntoSection(std::u16string_view text) const;

    std::vector<orvo::Replacement> ReplacementsIn(const ElementExtent& element,
                                                  const Change& change) const;
    orvo::Replacement Replace(Extent extent, std::string after) const;
    void ReplaceAttributes(const ElementExtent& element, const Change& change,
                           std::vector<orvo::Replacement>& replacements) const;
    void ReplaceText(const ElementExtent& element, std::u16string_view text,
                     std::vector<orvo::Replacement>& replacements) const;

    std::string content_;
    DocumentEncoding encoding_;
    std::string wideMarkup_;  // of a document in wider units, as bytes
    DocumentIndex index_;
    tses::XmlVersion version_;
    std::map<std::size_t, Change> changes_;
};

}  // namespace toolkit
