#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Draw.h>
#include <orvo/Layout.h>
#include <orvo/Model.h>
#include <orvo/Page.h>
#include "cli/ExitCode.h"
#include "cli/files/Output.h"
#include "cli/serve/SessionShelf.h"

namespace cli {

/// Saves a session as a page for a browser, with the media if it is to be heard. Refuses to embed
/// more than a browser takes.
ExitCode SavePage(const Output& out, const orvo::Layout& layout, const orvo::Session& session,
                  const std::vector<std::optional<orvo::Waveform>>& waveforms,
                  orvo::PageOptions options);

/// Asks the system to show a saved page. Reports if the system cannot.
ExitCode OpenPage(const std::string& name);

struct ServeOptions {
    std::uint16_t port = 0;  ///< 0: a free one
    bool open = false;       ///< shows the first page
};

/// Serves a session, or the sessions of a folder, until a signal ends it. Prints the address.
ExitCode ServePages(const std::string& name, const SessionShelf::Options& sessions,
                    const ServeOptions& options);

}  // namespace cli
