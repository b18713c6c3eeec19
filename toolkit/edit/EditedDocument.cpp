#include "toolkit/edit/EditedDocument.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "format/Limits.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Unicode.h"
#include "toolkit/TextPlaces.h"
#include "toolkit/scan/Values.h"

namespace toolkit {
namespace {

using orvo::Replacement;
namespace limits = tses::limits;
using tses::TextPlace;

constexpr char kDoubleQuote = '"';

std::string_view WithoutMark(std::string_view document, kelcore::TextUnits units) {
    return document.substr(units.markSize);
}

bool IsXml11(std::string_view markup) {
    return StatedInDeclaration(markup, "version") == "1.1";
}

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool DeclaresNamespace(std::u16string_view name) {
    return name == u"xmlns" || name.starts_with(u"xmlns:");
}

std::u16string_view LocalPart(std::u16string_view name) {
    return name.substr(name.find(u':') + 1);
}

bool IsName(std::u16string_view name) {
    const auto isLetter = [](char16_t unit) {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
    };
    const auto mayFollow = [isLetter](char16_t unit) {
        return isLetter(unit) || (unit >= u'0' && unit <= u'9') || unit == u'.' || unit == u'-';
    };
    return !name.empty() && isLetter(name.front()) && std::ranges::all_of(name, mayFollow) &&
           !name.starts_with(u"xmlns");
}

const char* const kNotCarried = "contains a character that XML cannot carry in this file";

}  // namespace

EditedDocument::EditedDocument(std::string content, const DocumentEncoding& encoding)
    : content_(std::move(content)),
      encoding_(encoding),
      wideMarkup_(
          encoding_.Units().size == 1
              ? std::string()
              : kelcore::MarkupOf(WithoutMark(content_, encoding_.Units()), encoding_.Units())),
      index_(encoding_.Units().size == 1 ? WithoutMark(content_, encoding_.Units())
                                         : std::string_view(wideMarkup_)),
      version_(IsXml11(index_.Markup()) ? tses::XmlVersion::V1_1 : tses::XmlVersion::V1_0) {}

bool EditedDocument::CanBeEdited() const {
    if (version_ == tses::XmlVersion::V1_0) {
        return true;
    }
    // Line ends beyond ASCII divide the parts of a tag, too.
    return std::ranges::all_of(Elements(), [this](const ElementExtent& element) {
        std::size_t from = element.startTag.begin;
        for (const AttributeExtent& attribute : index_.AttributesOf(element)) {
            if (!IsAscii(index_.Text({from, attribute.value.begin}))) {
                return false;
            }
            from = attribute.value.end;
        }
        return IsAscii(index_.Text({from, element.startTag.end}));
    });
}

std::u16string EditedDocument::Name(std::size_t element) const {
    return std::u16string(LocalPart(TextOf(Elements()[element].name)));
}

std::vector<std::u16string> EditedDocument::AttributeNames(std::size_t element) const {
    std::vector<std::u16string> names;
    const auto add = [&names](std::u16string_view name) {
        if (std::ranges::find(names, name) == names.end()) {
            names.emplace_back(name);
        }
    };
    for (const AttributeExtent& attribute : index_.AttributesOf(Elements()[element])) {
        const std::u16string name = TextOf(attribute.name);
        if (!DeclaresNamespace(name)) {
            add(LocalPart(name));
        }
    }
    for (const auto& [name, value] : ChangeOf(element).attributes) {
        add(name);
    }
    return names;
}

std::optional<std::u16string> EditedDocument::Attribute(std::size_t element,
                                                        std::u16string_view name) const {
    if (const auto change = changes_.find(element); change != changes_.end()) {
        for (const auto& [changed, value] : change->second.attributes) {
            if (changed == name) {
                return value;
            }
        }
    }
    const auto found = FindAttribute(Elements()[element], name);
    return found ? std::optional(ReadValue(TextOf(found->value), TextPlace::Attribute, version_))
                 : std::nullopt;
}

std::u16string EditedDocument::Text(std::size_t element) const {
    const auto change = changes_.find(element);
    if (change != changes_.end() && change->second.text) {
        return *change->second.text;
    }
    return HasElements(element) ? std::u16string() : OriginalText(Elements()[element]);
}

std::string EditedDocument::SetAttribute(std::size_t element, std::u16string_view name,
                                         std::u16string_view value) {
    if (!IsName(name)) {
        return "is not a name for an attribute";
    }
    if (!SpellValue(value, TextPlace::Attribute, version_)) {
        return kNotCarried;
    }
    Change change = ChangeOf(element);
    const auto place = std::ranges::find(change.attributes, name,
                                         &std::pair<std::u16string, std::u16string>::first);
    if (place != change.attributes.end()) {
        place->second = value;
    } else {
        change.attributes.emplace_back(name, value);
    }
    return Take(element, std::move(change));
}

std::string EditedDocument::SetText(std::size_t element, std::u16string_view text) {
    if (HasElements(element)) {
        return "contains elements";
    }
    if (!SpellValue(text, TextPlace::Text, version_)) {
        return kNotCarried;
    }
    Change change = ChangeOf(element);
    change.text = text;
    return Take(element, std::move(change));
}

std::vector<Replacement> EditedDocument::Replacements() const {
    std::vector<Replacement> all;
    for (const auto& [element, change] : changes_) {
        const std::vector<Replacement> some = ReplacementsIn(Elements()[element], change);
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

std::u16string EditedDocument::ValueOf(Extent extent, TextPlace place) const {
    return ReadValue(TextOf(extent), place, version_);
}

Replacement EditedDocument::ReplaceValue(Extent extent, std::u16string_view value, TextPlace place,
                                         char quote) const {
    return Replace(extent, place == TextPlace::Section
                               ? Encode(value)
                               : Encode(SpellValue(value, place, version_, quote).value()));
}

EditedDocument::Change EditedDocument::ChangeOf(std::size_t element) const {
    const auto change = changes_.find(element);
    return change != changes_.end() ? change->second : Change();
}

/// Takes a change over, unless a read would refuse what comes of it.
std::string EditedDocument::Take(std::size_t element, Change change) {
    std::string obstacle = ObstacleTo(Elements()[element], change);
    if (obstacle.empty()) {
        changes_[element] = std::move(change);
    }
    return obstacle;
}

std::string EditedDocument::ObstacleTo(const ElementExtent& element, const Change& change) const {
    std::string obstacle = ObstacleInTag(element, change);
    return obstacle.empty() ? ObstacleInText(element, change) : obstacle;
}

std::string EditedDocument::ObstacleInTag(const ElementExtent& element,
                                          const Change& change) const {
    const auto added = std::ranges::count_if(change.attributes, [&](const auto& attribute) {
        return !FindAttribute(element, attribute.first);
    });
    const std::size_t count = index_.AttributesOf(element).size() + static_cast<std::size_t>(added);
    if (added != 0 && count > limits::kAttributes) {
        return fmt::format("would be one of more than {} attributes", limits::kAttributes);
    }
    std::vector<Replacement> made;
    ReplaceAttributes(element, change, made);
    std::size_t size = BytesOf(element.startTag).size();
    for (const Replacement& one : made) {
        size += one.after.size() - one.before.size();
    }
    return ObstacleOfSize(size, limits::kTagBytes);
}

std::string EditedDocument::ObstacleInText(const ElementExtent& element,
                                           const Change& change) const {
    std::vector<Replacement> made;
    if (change.text) {
        ReplaceText(element, *change.text, made);
    }
    for (const Replacement& one : made) {
        if (std::string obstacle = ObstacleOfSize(one.after.size(), limits::kSectionBytes);
            !obstacle.empty()) {
            return obstacle;
        }
    }
    return {};
}

std::string EditedDocument::ObstacleOfSize(std::size_t size, kelcore::uint64 limit) const {
    const kelcore::uint64 most =
        encoding_.IsByTable() ? std::min(limit, limits::kForeignBytes) : limit;
    return size > most
               ? "would be longer than " + limits::InWords(most) + ", the most that a read accepts"
               : std::string();
}

std::string_view EditedDocument::BytesOf(Extent extent) const {
    const kelcore::TextUnits units = encoding_.Units();
    return WithoutMark(content_, units)
        .substr(extent.begin * units.size, extent.Size() * units.size);
}

/// As a read finds it: an attribute without a prefix, or else the last one with that local name.
std::optional<AttributeExtent> EditedDocument::FindAttribute(const ElementExtent& element,
                                                             std::u16string_view name) const {
    std::optional<AttributeExtent> found;
    for (const AttributeExtent& attribute : index_.AttributesOf(element)) {
        const std::u16string stated = TextOf(attribute.name);
        if (stated == name && !DeclaresNamespace(stated)) {
            return attribute;
        }
        if (LocalPart(stated) == name && !DeclaresNamespace(stated)) {
            found = attribute;
        }
    }
    return found;
}

std::u16string EditedDocument::OriginalText(const ElementExtent& element) const {
    std::u16string text;
    for (const TextExtent& part : index_.TextsOf(element)) {
        text += PartOfText(part);
    }
    return text;
}

std::u16string EditedDocument::PartOfText(const TextExtent& part) const {
    if (!part.isSection) {
        return ReadValue(TextOf(part.extent), TextPlace::Text, version_);
    }
    const std::u16string marked = TextOf(part.extent);
    const std::u16string_view text = std::u16string_view(marked).substr(
        kSectionBegin.size(), marked.size() - kSectionBegin.size() - kSectionEnd.size());
    return ReadValue(text, TextPlace::Section, version_);
}

/// The part that a new text takes the place of: a section, or else the first with more than layout.
const TextExtent& EditedDocument::TargetOf(const std::vector<TextExtent>& parts) const {
    const auto section = std::ranges::find(parts, true, &TextExtent::isSection);
    if (section != parts.end()) {
        return *section;
    }
    const auto worded = std::ranges::find_if(parts, [this](const TextExtent& part) {
        return PartOfText(part).find_first_not_of(u" \t\r\n") != std::u16string::npos;
    });
    return worded != parts.end() ? *worded : parts.front();
}

bool EditedDocument::HasElements(std::size_t element) const {
    return element + 1 < Elements().size() && Elements()[element + 1].parent == element;
}

/// Characters that the encoding lacks become references. Only texts and values contain such.
std::string EditedDocument::Encode(std::u16string_view spelled) const {
    std::u16string text;
    for (std::size_t i = 0; i < spelled.size();) {
        const char32_t character = kelcore::unicode::NextCodePoint(spelled, i);
        if (encoding_.CanEncode(character)) {
            kelcore::unicode::AppendUtf16(text, character);
        } else {
            text += SpellReference(character);
        }
    }
    return encoding_.Encode(text);
}

std::string EditedDocument::SpelledAttribute(std::u16string_view value, char quote) const {
    return Encode(SpellValue(value, TextPlace::Attribute, version_, quote).value());
}

std::string EditedDocument::SpelledText(std::u16string_view text) const {
    return Encode(SpellValue(text, TextPlace::Text, version_).value());
}

bool EditedDocument::FitsIntoSection(std::u16string_view text) const {
    for (std::size_t i = 0; i < text.size();) {
        if (!encoding_.CanEncode(kelcore::unicode::NextCodePoint(text, i))) {
            return false;
        }
    }
    return tses::IsCarriedAsItIs(text, TextPlace::Section) &&
           text.find(kelcore::AsciiToUTF16(kSectionEnd)) == text.npos;
}

std::vector<Replacement> EditedDocument::ReplacementsIn(const ElementExtent& element,
                                                        const Change& change) const {
    std::vector<Replacement> replacements;
    ReplaceAttributes(element, change, replacements);
    if (change.text && *change.text != OriginalText(element)) {
        ReplaceText(element, *change.text, replacements);
    }
    std::ranges::stable_sort(replacements, {}, &Replacement::offset);
    std::erase_if(replacements, [](const Replacement& one) { return one.before == one.after; });
    return replacements;
}

Replacement EditedDocument::Replace(Extent extent, std::string after) const {
    const kelcore::TextUnits units = encoding_.Units();
    return {.offset = units.markSize + extent.begin * units.size,
            .before = std::string(BytesOf(extent)),
            .after = std::move(after)};
}

void EditedDocument::ReplaceAttributes(const ElementExtent& element, const Change& change,
                                       std::vector<Replacement>& replacements) const {
    std::string added;
    for (const auto& [name, value] : change.attributes) {
        const auto found = FindAttribute(element, name);
        if (!found) {
            added += encoding_.Encode(u" " + name + u"=\"") +
                     SpelledAttribute(value, kDoubleQuote) + encoding_.Encode(u"\"");
        } else if (value != ReadValue(TextOf(found->value), TextPlace::Attribute, version_)) {
            replacements.push_back(Replace(found->value, SpelledAttribute(value, found->quote)));
        }
    }
    if (!added.empty()) {
        const auto attributes = index_.AttributesOf(element);
        const std::size_t place =
            attributes.empty() ? element.name.end : attributes.back().value.end + 1;
        replacements.push_back(Replace({place, place}, std::move(added)));
    }
}

void EditedDocument::ReplaceText(const ElementExtent& element, std::u16string_view text,
                                 std::vector<Replacement>& replacements) const {
    if (element.isEmptyTag) {
        constexpr std::size_t kEnd = 2;  // "/>"
        replacements.push_back(
            Replace({element.startTag.end - kEnd, element.startTag.end},
                    encoding_.Encode(u">") + SpelledText(text) + encoding_.Encode(u"</") +
                        std::string(BytesOf(element.name)) + encoding_.Encode(u">")));
        return;
    }
    const std::vector<TextExtent> parts = index_.TextsOf(element);
    const TextExtent& target = TargetOf(parts);
    for (const TextExtent& part : parts) {
        if (&part != &target) {
            replacements.push_back(Replace(part.extent, {}));
        } else if (part.isSection && FitsIntoSection(text)) {
            replacements.push_back(
                Replace(part.extent, encoding_.Encode(kelcore::AsciiToUTF16(kSectionBegin)) +
                                         encoding_.Encode(text) +
                                         encoding_.Encode(kelcore::AsciiToUTF16(kSectionEnd))));
        } else {
            replacements.push_back(Replace(part.extent, SpelledText(text)));
        }
    }
}

}  // namespace toolkit
