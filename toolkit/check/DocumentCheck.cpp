#include "toolkit/check/DocumentCheck.h"

#include <algorithm>
#include <optional>

#include "format/Elements.h"
#include "platform/kelcore/Strings.h"
#include "toolkit/scan/LossWords.h"

namespace toolkit {
namespace {

using tses::Attribute;
using tses::Element;

constexpr const char* kDropped = "; a save drops it";

bool IsElementSomewhere(std::u16string_view name) {
    return std::ranges::find(tses::kElements, name, &Element::name) != std::end(tses::kElements);
}

bool IsAttributeSomewhere(std::u16string_view name) {
    return std::ranges::any_of(tses::kElements, [name](const Element& element) {
        return element.FindAttribute(name) != nullptr;
    });
}

std::u16string_view LocalPart(std::u16string_view name) {
    return name.substr(name.find(u':') + 1);
}

/// What a read takes a wrong value for.
std::string Meaning(const Element* kind, std::u16string_view attribute, std::u16string_view value) {
    const Attribute* const known = kind != nullptr ? kind->FindAttribute(attribute) : nullptr;
    if (known == nullptr || known->meaningOf == nullptr) {
        return "has no meaning";
    }
    const std::optional<std::u16string> meaning = known->meaningOf(value);
    return meaning ? "is read as " + Quoted(*meaning) : "is read as if it were absent";
}

}  // namespace

DocumentFinding Word(const NotCarried& loss, const Element* kind, std::u16string_view name,
                     std::u16string_view value) {
    const std::u16string_view attribute = LocalPart(loss.attribute);
    switch (loss.cause) {
        case LossCause::UnknownElement:
            return IsElementSomewhere(name)
                       ? DocumentFinding{Code::MisplacedElement,
                                         loss.what + " is misplaced" + kDropped}
                       : DocumentFinding{Code::UnknownElement,
                                         loss.what + " is unknown" + kDropped};
        case LossCause::IgnoredElement:
            return {Code::IgnoredElement, loss.what + " has no effect" + kDropped};
        case LossCause::RepeatedElement:
            return {Code::RepeatedElement, loss.what + " changes what the first one says"};
        case LossCause::RepeatedKey:
            return {Code::DuplicateId, loss.what};
        case LossCause::MissingKey:
            return {Code::MissingId, loss.what + "; a read drops it"};
        case LossCause::MissingKeyThatEndsTheRead:
            return {Code::MissingId, loss.what + "; the session cannot be read"};
        case LossCause::StrayText:
            return {Code::StrayText, loss.what + kDropped};
        case LossCause::NotBase64:
            return {Code::BadBase64, loss.what + "; a read drops it"};
        case LossCause::UnknownAttribute:
            return IsAttributeSomewhere(attribute)
                       ? DocumentFinding{Code::MisplacedAttribute,
                                         loss.what + " is misplaced" + kDropped}
                       : DocumentFinding{Code::UnknownAttribute,
                                         loss.what + " is unknown" + kDropped};
        case LossCause::IgnoredAttribute:
            return {Code::IgnoredAttribute, loss.what + " has no effect" + kDropped};
        case LossCause::HiddenAttribute:
            return {Code::RepeatedAttribute, loss.what + " is hidden by another one" + kDropped};
        case LossCause::WrongValue:
            return {Code::WrongValue, loss.what + " " + Meaning(kind, attribute, value)};
        case LossCause::Joint:
            return {Code::NotSaved, loss.what};
    }
    return {Code::NotSaved, loss.what};
}

}  // namespace toolkit
