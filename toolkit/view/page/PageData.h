#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvo/Page.h>

namespace orvo::page {

/// A layout as the page's script takes it (web/src/picture.ts): a column for each member, as an
/// array or, where all values are equal, as that value; texts as numbers of an array of all.
std::string DataOf(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
                   const PageOptions& options);

}  // namespace orvo::page
