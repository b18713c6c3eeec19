#include "toolkit/redact/RedactDocument.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

#include "format/TextMeaning.h"
#include "toolkit/ValueCheck.h"

namespace toolkit {
namespace {

using orvo::Replacement;
using tses::Element;
using tses::TextKind;
using tses::TextMeaning;
using tses::TextOwner;
using tses::TextPlace;

std::u16string_view LocalPart(std::u16string_view name) {
    return name.substr(name.find(u':') + 1);
}

bool DeclaresNamespace(std::u16string_view name) {
    return name == u"xmlns" || name.starts_with(u"xmlns:");
}

TextPlace PlaceOf(const Piece& piece) {
    return piece.kind == PieceKind::Text ? TextPlace::Text : TextPlace::Section;
}

bool IsCharacterData(const Piece& piece) {
    return piece.kind == PieceKind::Text || piece.kind == PieceKind::Section;
}

class Redaction {
public:
    Redaction(const EditedDocument& document, const orvo::RedactOptions& options,
              Pseudonyms& pseudonyms)
        : document_(document), options_(options), pseudonyms_(pseudonyms) {}

    std::vector<Replacement> Run() && {
        for (const ElementExtent& element : document_.Elements()) {
            for (const AttributeExtent& attribute : document_.Index().AttributesOf(element)) {
                OfAttribute(element, attribute);
            }
        }
        std::map<std::size_t, std::vector<Piece>> names;  // by element
        for (const Piece& piece : document_.Index().Pieces()) {
            if (IsCharacterData(piece) && IsName(piece.element)) {
                names[piece.element].push_back(piece);
            } else {
                OfPiece(piece);
            }
        }
        for (const auto& [element, pieces] : names) {
            OfNameInPieces(*OwnerOfTextIn(element), pieces);
        }
        std::erase_if(made_, [](const Replacement& one) { return one.before == one.after; });
        std::ranges::sort(made_, {}, &Replacement::offset);
        return std::move(made_);
    }

private:
    // Attributes

    void OfAttribute(const ElementExtent& element, const AttributeExtent& attribute) {
        const std::u16string name = document_.TextOf(attribute.name);
        const std::u16string value = document_.ValueOf(attribute.value, TextPlace::Attribute);
        const std::u16string made = DeclaresNamespace(name)
                                        ? Namespace(name, value)
                                        : NewValue(element.kind, LocalPart(name), value);
        if (made != value) {
            made_.push_back(document_.ReplaceValue(attribute.value, made, TextPlace::Attribute,
                                                   attribute.quote));
        }
    }

    /// Two prefixes of one namespace still have one.
    std::u16string Namespace(std::u16string_view name, const std::u16string& uri) {
        return options_.keepUnknown || uri.empty() || name == u"xmlns:xml"
                   ? uri
                   : pseudonyms_.OfNamespace(uri);
    }

    std::u16string NewValue(const Element* kind, std::u16string_view name,
                            const std::u16string& value) {
        const tses::Attribute* const known = kind != nullptr ? kind->FindAttribute(name) : nullptr;
        if (known == nullptr) {
            return options_.keepUnknown ? value : Masked(value);
        }
        // What is no number or keyword can be any text.
        if (!IsValue(known->kind, known->words, value, Target::Json)) {
            return options_.keepUnknown ? value : Masked(value);
        }
        const std::optional<TextOwner> owner = tses::OwnerOfAttribute(*kind, *known);
        return owner ? NewText(*owner, value) : value;
    }

    std::u16string NewText(const TextOwner& owner, const std::u16string& text) {
        switch (owner.meaning) {
            case TextMeaning::OfThePrograms:
                return text;
            case TextMeaning::Name:
                return options_.keepNames ? text : pseudonyms_.OfName(owner.thing, text);
            case TextMeaning::Path:
                return options_.keepPaths ? text : pseudonyms_.OfPath(text);
            case TextMeaning::Free:
                return options_.keepTexts ? text : Masked(text);
        }
        return text;
    }

    // Texts

    std::optional<TextOwner> OwnerOfTextIn(std::size_t element) const {
        const ElementExtent& extent = document_.Elements()[element];
        const Element* const parent = document_.Elements()[extent.parent].kind;
        return extent.kind != nullptr && parent != nullptr
                   ? tses::OwnerOfText(*extent.kind, parent->state)
                   : std::nullopt;
    }

    bool IsName(std::size_t element) const {
        const std::optional<TextOwner> owner = OwnerOfTextIn(element);
        return owner && owner->meaning == TextMeaning::Name;
    }

    void OfPiece(const Piece& piece) {
        const std::u16string spelled = document_.TextOf(piece.content);
        const bool hasReferences =
            piece.kind == PieceKind::Text && spelled.find(u'&') != spelled.npos;
        const TextPlace place = hasReferences ? TextPlace::Text : TextPlace::Section;
        const std::u16string text =
            hasReferences ? document_.ValueOf(piece.content, place) : spelled;
        const std::u16string made = NewPiece(piece, text);
        if (made != text) {
            made_.push_back(document_.ReplaceValue(piece.content, made, place));
        }
    }

    std::u16string NewPiece(const Piece& piece, const std::u16string& text) {
        if (IsCharacterData(piece)) {
            if (const std::optional<TextOwner> owner = OwnerOfTextIn(piece.element)) {
                return NewText(*owner, text);
            }
            const Element* const kind = document_.Elements()[piece.element].kind;
            if (kind != nullptr && kind->text == TextKind::Base64) {
                return options_.keepStates ? text : Zeroed(text);
            }
        }
        return options_.keepUnknown ? text : Masked(text);
    }

    /// A comment or a section may divide a name.
    void OfNameInPieces(const TextOwner& owner, const std::vector<Piece>& pieces) {
        std::u16string name;
        for (const Piece& piece : pieces) {
            name += document_.ValueOf(piece.content, PlaceOf(piece));
        }
        std::u16string made = NewText(owner, name);
        if (made == name) {
            return;
        }
        for (const Piece& piece : pieces) {
            made_.push_back(
                document_.ReplaceValue(piece.content, std::exchange(made, {}), PlaceOf(piece)));
        }
    }

    const EditedDocument& document_;
    const orvo::RedactOptions& options_;
    Pseudonyms& pseudonyms_;
    std::vector<Replacement> made_;
};

}  // namespace

std::vector<Replacement> RedactDocument(const EditedDocument& document,
                                        const orvo::RedactOptions& options,
                                        Pseudonyms& pseudonyms) {
    return Redaction(document, options, pseudonyms).Run();
}

}  // namespace toolkit
