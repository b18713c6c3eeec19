#include <orvo/Edit.h>

#include <utility>
#include <variant>

#include "platform/kelcore/Strings.h"
#include "toolkit/edit/OpenedDocument.h"

namespace orvo {

std::vector<Replacement> Inverse(const std::vector<Replacement>& replacements) {
    std::vector<Replacement> inverse;
    std::uint64_t shift = 0;  // wraps around where the content has shrunk
    for (const Replacement& one : replacements) {
        inverse.push_back({one.offset + shift, one.after, one.before});
        shift += one.after.size() - one.before.size();
    }
    return inverse;
}

std::optional<std::string> Apply(std::string_view content,
                                 const std::vector<Replacement>& replacements) {
    std::string changed;
    std::size_t at = 0;
    for (const Replacement& one : replacements) {
        if (one.offset < at || one.offset > content.size() ||
            !content.substr(one.offset).starts_with(one.before)) {
            return std::nullopt;
        }
        changed += content.substr(at, one.offset - at);
        changed += one.after;
        at = one.offset + one.before.size();
    }
    changed += content.substr(at);
    return changed;
}

class Edit::Document : public toolkit::OpenedDocument {
public:
    using OpenedDocument::OpenedDocument;
};

Edit::Edit(std::unique_ptr<Document> document) : document_(std::move(document)) {}
Edit::Edit(Edit&&) noexcept = default;
Edit& Edit::operator=(Edit&&) noexcept = default;
Edit::~Edit() = default;

std::size_t Edit::ElementCount() const {
    return document_->Elements().size();
}

std::string Edit::Name(std::size_t element) const {
    return kelcore::UTF16to8(document_->Name(element));
}

std::optional<std::size_t> Edit::Parent(std::size_t element) const {
    return element != 0 ? std::optional(document_->Elements()[element].parent) : std::nullopt;
}

bool Edit::IsKnown(std::size_t element) const {
    return document_->Elements()[element].kind != nullptr;
}

std::vector<std::string> Edit::AttributeNames(std::size_t element) const {
    std::vector<std::string> names;
    for (const std::u16string& name : document_->AttributeNames(element)) {
        names.push_back(kelcore::UTF16to8(name));
    }
    return names;
}

std::optional<std::string> Edit::Attribute(std::size_t element, std::string_view name) const {
    const auto value = document_->Attribute(element, kelcore::UTF8to16(name));
    return value ? std::optional(kelcore::UTF16to8(*value)) : std::nullopt;
}

std::string Edit::Text(std::size_t element) const {
    return kelcore::UTF16to8(document_->Text(element));
}

std::optional<Message> Edit::SetAttribute(std::size_t element, std::string_view name,
                                          std::string_view value) {
    return document_->Explain(
        document_->SetAttribute(element, kelcore::UTF8to16(name), kelcore::UTF8to16(value)));
}

std::optional<Message> Edit::SetText(std::size_t element, std::string_view text) {
    return document_->Explain(document_->SetText(element, kelcore::UTF8to16(text)));
}

std::vector<Replacement> Edit::Replacements() const {
    return document_->Replacements();
}

WriteResult Edit::Save(const std::filesystem::path& file) const {
    return document_->Save(file, Replacements());
}

EditResult OpenEdit(const std::filesystem::path& file) {
    EditResult result;
    auto source = toolkit::ReadSource(file);
    if (auto* const messages = std::get_if<std::vector<Message>>(&source)) {
        result.messages = std::move(*messages);
        return result;
    }
    auto document =
        std::make_unique<Edit::Document>(std::get<toolkit::DocumentSource>(std::move(source)));
    if (auto obstacle = document->ObstacleToChanges()) {
        result.messages.push_back(std::move(*obstacle));
        return result;
    }
    result.edit = Edit(std::move(document));
    return result;
}

}  // namespace orvo
