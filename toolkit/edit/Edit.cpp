#include <orvo/Edit.h>

#include <system_error>
#include <utility>
#include <variant>

#include "format/Limits.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "session/PluginTurn.h"
#include "toolkit/FileContent.h"
#include "toolkit/edit/EditedDocument.h"

namespace orvo {
namespace {

constexpr const char* kChangedMeanwhile = "was changed by another program";

Message MessageOf(const std::filesystem::path& file, std::string what, std::string advice = {}) {
    return {.file = file.string(), .what = std::move(what), .advice = std::move(advice)};
}

std::optional<toolkit::DocumentEncoding> EncodingOf(std::string_view content) {
    const auto turn = WaitForTurn();
    return toolkit::DocumentEncoding::Of(content);
}

}  // namespace

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

/// The document and the file that it comes from.
class Edit::Document : public toolkit::EditedDocument {
public:
    Document(std::filesystem::path file, toolkit::FileIdentity identity, std::string content,
             const toolkit::DocumentEncoding& encoding)
        : EditedDocument(std::move(content), encoding),
          file_(std::move(file)),
          identity_(identity) {}

    /// Whether the target is the file that was opened, and another program has changed it.
    bool WasChangedMeanwhile(const std::filesystem::path& target) const {
        std::error_code error;
        return std::filesystem::weakly_canonical(target, error) ==
                   std::filesystem::weakly_canonical(file_, error) &&
               toolkit::IdentityOf(target.string()) != identity_;
    }

    std::optional<Message> Explain(std::string obstacle) const {
        return obstacle.empty() ? std::nullopt
                                : std::optional(MessageOf(file_, std::move(obstacle)));
    }

private:
    std::filesystem::path file_;
    toolkit::FileIdentity identity_;
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
    WriteResult result;
    if (document_->WasChangedMeanwhile(file)) {
        result.messages.push_back(
            MessageOf(file, kChangedMeanwhile, "open it again and repeat the changes"));
        return result;
    }
    const std::string content = Apply(document_->Content(), Replacements()).value();
    if (content.size() > tses::limits::kFileBytes) {
        result.messages.push_back(MessageOf(
            file, "would be longer than " + tses::limits::InWords(tses::limits::kFileBytes) +
                      ", the most that a read accepts"));
        return result;
    }
    kelcore::File target(kelcore::PathFromBytes(file.string()));
    try {
        target.Create();
        kelcore::OPlatformByteStream stream(target);
        stream.WriteBlock(content.data(), content.size());
        stream.Close();
        result.ok = true;
    } catch (const kelcore::file_exception& failure) {
        result.messages.push_back(MessageOf(file, failure.MessageFor(target.FullPath())));
    }
    return result;
}

EditResult OpenEdit(const std::filesystem::path& file) {
    EditResult result;
    const auto identity = toolkit::IdentityOf(file.string());
    if (ReadResult read = ReadSession(file); !read) {
        result.messages = std::move(read.messages);
        return result;
    }
    auto content = toolkit::ReadFileContent(file.string());
    if (const auto* const problem = std::get_if<toolkit::Problem>(&content)) {
        result.messages.push_back(MessageOf(file, problem->what, problem->advice));
        return result;
    }
    if (!identity || toolkit::IdentityOf(file.string()) != identity) {
        result.messages.push_back(MessageOf(file, kChangedMeanwhile, "try again"));
        return result;
    }
    auto& bytes = std::get<std::string>(content);
    const auto encoding = EncodingOf(bytes);
    auto document =
        encoding ? std::make_unique<Edit::Document>(file, *identity, std::move(bytes), *encoding)
                 : nullptr;
    if (!document || !document->CanBeEdited()) {
        result.messages.push_back(MessageOf(file, "cannot be edited in its own text",
                                            "save it anew with \"orvo convert\""));
        return result;
    }
    result.edit = Edit(std::move(document));
    return result;
}

}  // namespace orvo
