#pragma once

#include <filesystem>

#include <orvo/Interchange.h>
#include "toolkit/interchange/MediaFacts.h"
#include "toolkit/interchange/OutputFile.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange {

/// The caller ended the conversion.
struct Cancelled {};

/// What a conversion to another format works with. Nothing is written but through `outputs`.
struct Export {
    const orvo::Session& session;
    const std::filesystem::path& target;
    const orvo::ExportOptions& options;
    Reporter& reporter;
    MediaFacts& media;
    Outputs& outputs;

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
