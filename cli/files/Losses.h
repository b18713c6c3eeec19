#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/DocumentScan.h"

namespace cli {

/// Whether to accept losses, and how many to list. Losses are always reported.
struct LossRule {
    bool lossy = false;  ///< convert despite losses
    bool all = false;    ///< list all losses

    /// The maximum number of losses to list.
    std::size_t Limit() const;
};

/// Lists what cannot be carried over.
/// @param subject  the file that contains it
/// @param count    the total, including losses that are not in `losses`
void NameLosses(const std::string& subject, const std::vector<toolkit::NotCarried>& losses,
                std::size_t count);

/// Reports that nothing was written because of the problems listed before.
void RefuseConversion(const std::string& subject);

/// Likewise, and points to --lossy.
void RefuseLosses(const std::string& subject);

}  // namespace cli
