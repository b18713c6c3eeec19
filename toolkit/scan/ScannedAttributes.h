#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace toolkit {

/// An attribute of a tag, or the declaration of a namespace.
class ScannedAttribute {
public:
    ScannedAttribute(std::u16string_view qualifiedName, std::u16string_view value)
        : qualifiedName_(qualifiedName),
          localName_(qualifiedName.substr(qualifiedName.find(u':') + 1)),
          value_(value) {}

    std::u16string_view QualifiedName() const { return qualifiedName_; }
    std::u16string_view LocalName() const { return localName_; }
    std::u16string_view Value() const { return value_; }
    bool HasPrefix() const { return localName_.size() != qualifiedName_.size(); }
    bool DeclaresNamespace() const {
        return qualifiedName_ == u"xmlns" || qualifiedName_.starts_with(u"xmlns:");
    }

private:
    std::u16string_view qualifiedName_;
    std::u16string_view localName_;
    std::u16string_view value_;
};

/// The attributes of a tag in its order, with declarations of namespaces.
class ScannedAttributes {
public:
    explicit ScannedAttributes(std::span<const ScannedAttribute> list) : list_(list) {}

    std::size_t Count() const { return list_.size(); }
    const ScannedAttribute& At(std::size_t index) const { return list_[index]; }

    /// A prefix is ignored on reading, so of two attributes with one local name only one counts:
    /// the one without a prefix, or else the last.
    bool HidesBehindAnother(std::size_t index) const {
        if (!At(index).HasPrefix()) {
            return false;
        }
        for (std::size_t i = 0; i < Count(); ++i) {
            const ScannedAttribute& other = At(i);
            const bool same = i != index && !other.DeclaresNamespace() &&
                              other.LocalName() == At(index).LocalName();
            if (same && (i > index || !other.HasPrefix())) {
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
        for (std::size_t i = 0; i < Count(); ++i) {
            if (At(i).LocalName() == name && !At(i).DeclaresNamespace() && !HidesBehindAnother(i)) {
                return At(i).Value();
            }
        }
        return std::nullopt;
    }

private:
    std::span<const ScannedAttribute> list_;
};

}  // namespace toolkit
