#pragma once

#include <optional>
#include <string_view>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/util/RefVectorOf.hpp>

namespace toolkit {

/// The parser's texts may be null; null gives an empty view.
inline std::u16string_view ViewOf(const XMLCh* text) {
    return text != nullptr ? std::u16string_view(text) : std::u16string_view();
}

/// The attributes of a tag as the parser has them, including declarations of namespaces.
class ScannedAttributes {
public:
    using XMLAttr = xercesc::XMLAttr;
    using List = xercesc::RefVectorOf<XMLAttr>;

    ScannedAttributes(const List& list, XMLSize_t count) : list_(list), count_(count) {}

    XMLSize_t Count() const { return count_; }
    const XMLAttr& At(XMLSize_t index) const { return *list_.elementAt(index); }

    static std::u16string_view LocalName(const XMLAttr& attribute) {
        return ViewOf(attribute.getName());
    }
    static std::u16string_view QualifiedName(const XMLAttr& attribute) {
        return ViewOf(attribute.getQName());
    }
    static bool HasPrefix(const XMLAttr& attribute) {
        return !ViewOf(attribute.getPrefix()).empty();
    }
    static bool DeclaresNamespace(const XMLAttr& attribute) {
        constexpr std::u16string_view kDeclaration = u"xmlns";
        return ViewOf(attribute.getPrefix()) == kDeclaration ||
               QualifiedName(attribute) == kDeclaration;
    }

    /// A prefix is ignored on reading, so of two attributes with one local name only one counts:
    /// the one without a prefix, or else the last.
    bool HidesBehindAnother(XMLSize_t index) const {
        if (!HasPrefix(At(index))) {
            return false;
        }
        for (XMLSize_t i = 0; i < count_; ++i) {
            const XMLAttr& other = At(i);
            const bool same =
                i != index && !DeclaresNamespace(other) && LocalName(other) == LocalName(At(index));
            if (same && (i > index || !HasPrefix(other))) {
                return true;
            }
        }
        return false;
    }

    /// The value that counts among those with that name; no value without one, or for an empty
    /// name.
    std::optional<std::u16string_view> Find(std::u16string_view name) const {
        if (name.empty()) {
            return std::nullopt;
        }
        for (XMLSize_t i = 0; i < count_; ++i) {
            if (LocalName(At(i)) == name && !DeclaresNamespace(At(i)) && !HidesBehindAnother(i)) {
                return ViewOf(At(i).getValue());
            }
        }
        return std::nullopt;
    }

private:
    const List& list_;
    XMLSize_t count_;
};

}  // namespace toolkit
