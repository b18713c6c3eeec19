#include <orvo/Redact.h>

#include <utility>
#include <variant>

#include "toolkit/edit/OpenedDocument.h"
#include "toolkit/redact/Pseudonyms.h"
#include "toolkit/redact/RedactDocument.h"

namespace orvo {

class Redactor::State {
public:
    explicit State(const RedactOptions& kept) : options(kept) {}

    RedactOptions options;
    toolkit::Pseudonyms pseudonyms;
};

Redactor::Redactor(const RedactOptions& options) : state_(std::make_unique<State>(options)) {}
Redactor::Redactor(Redactor&&) noexcept = default;
Redactor& Redactor::operator=(Redactor&&) noexcept = default;
Redactor::~Redactor() = default;

RedactResult Redactor::Redact(const std::filesystem::path& source,
                              const std::filesystem::path& target) {
    RedactResult result;
    auto read = toolkit::ReadSource(source);
    if (auto* const messages = std::get_if<std::vector<Message>>(&read)) {
        result.messages = std::move(*messages);
        return result;
    }
    const toolkit::OpenedDocument document(std::get<toolkit::DocumentSource>(std::move(read)));
    if (auto obstacle = document.ObstacleToChanges()) {
        result.messages.push_back(std::move(*obstacle));
        return result;
    }
    result.isRead = true;
    const std::vector<Replacement> replacements =
        toolkit::RedactDocument(document, state_->options, state_->pseudonyms);
    WriteResult written = document.Save(target, replacements);
    result.ok = written.ok;
    result.changes = replacements.size();
    result.messages = std::move(written.messages);
    return result;
}

std::map<std::string, std::string> Redactor::Key() const {
    return state_->pseudonyms.Key();
}

}  // namespace orvo
