#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <orvo/Interchange.h>
#include "toolkit/interchange/MediaFacts.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange {

/// Why a conversion failed, for the user.
class Failure : public std::runtime_error {
public:
    explicit Failure(orvo::Message message)
        : std::runtime_error(message.what), message_(std::move(message)) {}

    const orvo::Message& What() const { return message_; }

private:
    orvo::Message message_;
};

/// The caller ended the conversion.
struct Cancelled {};

/// What a conversion to another format works with. Nothing is written but through `OutputFile`.
struct Export {
    const orvo::Session& session;
    const std::filesystem::path& target;
    const orvo::ExportOptions& options;
    Reporter& reporter;
    MediaFacts& media;
    std::vector<std::filesystem::path>& files;  ///< add each file that was written

    /// @throws Cancelled
    void Progress(double share) const;
};

/// What a conversion from another format works with.
struct Import {
    const std::filesystem::path& file;
    const orvo::ImportOptions& options;
    Reporter& reporter;

    /// @throws Cancelled
    void Progress(double share) const;
};

/// A format: one folder beside this file.
struct Format {
    orvo::InterchangeKindFacts facts;
    /// @throws Failure, Cancelled
    void (*write)(const Export& job);
    /// Null if the format is not read.
    /// @throws Failure, Cancelled
    orvo::Session (*read)(const Import& job) = nullptr;
};

}  // namespace toolkit::interchange
