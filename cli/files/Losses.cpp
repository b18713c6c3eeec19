#include "cli/files/Losses.h"

#include <fmt/format.h>

#include <limits>

#include "cli/terminal/Messages.h"

namespace cli {
namespace {

constexpr const char* kNotConverted = "not converted";
constexpr const char* kNothingWritten = "nothing was written, because of the problems above";

}  // namespace

std::size_t LossRule::Limit() const {
    return all ? std::numeric_limits<std::size_t>::max() : toolkit::kNotCarriedLimit;
}

void NameLosses(const std::string& subject, const std::vector<toolkit::NotCarried>& losses,
                std::size_t count) {
    for (const toolkit::NotCarried& loss : losses) {
        Complain({.subject = subject,
                  .place = loss.place,
                  .what = "cannot be carried over",
                  .advice = loss.what});
    }
    if (count > losses.size()) {
        Complain({.subject = subject,
                  .what = fmt::format("and {} more", count - losses.size()),
                  .advice = "--all lists all of them"});
    }
}

void RefuseConversion(const std::string& subject) {
    Complain({.subject = subject, .what = kNotConverted, .advice = kNothingWritten});
}

void RefuseLosses(const std::string& subject) {
    Complain({.subject = subject,
              .what = kNotConverted,
              .advice = std::string(kNothingWritten) + "; --lossy converts anyway"});
}

}  // namespace cli
