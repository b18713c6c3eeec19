#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <orvo/Edit.h>
#include <orvo/Message.h>
#include <orvo/Session.h>
#include "toolkit/FileContent.h"
#include "toolkit/edit/EditedDocument.h"
#include "toolkit/scan/DocumentEncoding.h"

namespace toolkit {

/// The content of a session file that a read accepts.
struct DocumentSource {
    std::filesystem::path file;
    FileIdentity identity;
    std::string content;
    DocumentEncoding encoding;
};

/// Reads the content of a session file, or says why there is none.
std::variant<DocumentSource, std::vector<orvo::Message>> ReadSource(
    const std::filesystem::path& file);

/// A document and the file that it comes from.
class OpenedDocument : public EditedDocument {
public:
    explicit OpenedDocument(DocumentSource source);

    /// Why the document cannot be changed in its own text.
    std::optional<orvo::Message> ObstacleToChanges() const;

    /// A message about the file; no value for an empty text.
    std::optional<orvo::Message> Explain(std::string obstacle) const;

    /// Saves the document with replacements. What this means, `orvo::Edit::Save` says.
    orvo::WriteResult Save(const std::filesystem::path& target,
                           const std::vector<orvo::Replacement>& replacements) const;

private:
    bool WasChangedMeanwhile(const std::filesystem::path& target) const;

    std::filesystem::path file_;
    FileIdentity identity_;
};

}  // namespace toolkit
