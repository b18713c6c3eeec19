#include "toolkit/edit/OpenedDocument.h"

#include <system_error>
#include <utility>

#include "format/Limits.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "session/PluginTurn.h"

namespace toolkit {
namespace {

using orvo::Message;

constexpr const char* kChangedMeanwhile = "was changed by another program";

Message MessageOf(const std::filesystem::path& file, std::string what, std::string advice = {}) {
    return {.file = file.string(), .what = std::move(what), .advice = std::move(advice)};
}

Message CannotBeChanged(const std::filesystem::path& file) {
    return MessageOf(file, "cannot be edited in its own text",
                     "save it anew with \"orvo convert\"");
}

std::optional<DocumentEncoding> EncodingOf(std::string_view content) {
    const auto turn = orvo::WaitForTurn();
    return DocumentEncoding::Of(content);
}

}  // namespace

std::variant<DocumentSource, std::vector<Message>> ReadSource(const std::filesystem::path& file) {
    const auto identity = IdentityOf(file.string());
    if (orvo::ReadResult read = orvo::ReadSession(file); !read) {
        return std::move(read.messages);
    }
    auto content = ReadFileContent(file.string());
    if (const auto* const problem = std::get_if<Problem>(&content)) {
        return std::vector{MessageOf(file, problem->what, problem->advice)};
    }
    if (!identity || IdentityOf(file.string()) != identity) {
        return std::vector{MessageOf(file, kChangedMeanwhile, "try again")};
    }
    auto& bytes = std::get<std::string>(content);
    const auto encoding = EncodingOf(bytes);
    if (!encoding) {
        return std::vector{CannotBeChanged(file)};
    }
    return DocumentSource{file, *identity, std::move(bytes), *encoding};
}

OpenedDocument::OpenedDocument(DocumentSource source)
    : EditedDocument(std::move(source.content), source.encoding),
      file_(std::move(source.file)),
      identity_(source.identity) {}

std::optional<Message> OpenedDocument::ObstacleToChanges() const {
    return CanBeEdited() ? std::nullopt : std::optional(CannotBeChanged(file_));
}

std::optional<Message> OpenedDocument::Explain(std::string obstacle) const {
    return obstacle.empty() ? std::nullopt : std::optional(MessageOf(file_, std::move(obstacle)));
}

/// Whether the target is the file that was opened, and another program has changed it.
bool OpenedDocument::WasChangedMeanwhile(const std::filesystem::path& target) const {
    std::error_code error;
    return std::filesystem::weakly_canonical(target, error) ==
               std::filesystem::weakly_canonical(file_, error) &&
           IdentityOf(target.string()) != identity_;
}

orvo::WriteResult OpenedDocument::Save(const std::filesystem::path& target,
                                       const std::vector<orvo::Replacement>& replacements) const {
    orvo::WriteResult result;
    if (WasChangedMeanwhile(target)) {
        result.messages.push_back(
            MessageOf(target, kChangedMeanwhile, "open it again and repeat the changes"));
        return result;
    }
    const std::string content = orvo::Apply(Content(), replacements).value();
    if (content.size() > tses::limits::kFileBytes) {
        result.messages.push_back(MessageOf(
            target, "would be longer than " + tses::limits::InWords(tses::limits::kFileBytes) +
                        ", the most that a read accepts"));
        return result;
    }
    kelcore::File file(kelcore::PathFromBytes(target.string()));
    try {
        file.Create();
        kelcore::OPlatformByteStream stream(file);
        stream.WriteBlock(content.data(), content.size());
        stream.Close();
        result.ok = true;
    } catch (const kelcore::file_exception& failure) {
        result.messages.push_back(MessageOf(target, failure.MessageFor(file.FullPath())));
    }
    return result;
}

}  // namespace toolkit
