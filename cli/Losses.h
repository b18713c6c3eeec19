#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/DocumentScan.h"

namespace cli {

/// Whether losses are allowed, and how many are named. Losses are always reported.
struct LossRule {
    bool lossy = false;  ///< converts all the same
    bool all = false;    ///< names every loss, however many there are

    /// How many losses are named one by one.
    std::size_t Limit() const;
};

/// Names what cannot be carried over.
/// @param subject  the file that has it
/// @param count    how many there are, those that are not among `losses` included
void NameLosses(const std::string& subject, const std::vector<toolkit::NotCarried>& losses,
                std::size_t count);

/// Says that nothing was written, because of what is named above.
void RefuseConversion(const std::string& subject);

/// The same where --lossy would convert.
void RefuseLosses(const std::string& subject);

}  // namespace cli
