#include <orvo/Interchange.h>

#include <algorithm>
#include <array>
#include <exception>
#include <iterator>
#include <new>
#include <ostream>
#include <utility>

#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/ardour/Ardour.h"
#include "toolkit/interchange/csv/Csv.h"
#include "toolkit/interchange/dawproject/DawProject.h"
#include "toolkit/interchange/edl/Edl.h"
#include "toolkit/interchange/otio/Otio.h"
#include "toolkit/interchange/rpp/Rpp.h"

namespace orvo {
namespace {

namespace interchange = toolkit::interchange;

/// All formats.
constexpr std::array kFormats = {
    interchange::Format{.facts = {.kind = InterchangeKind::DawProject,
                                  .name = "dawproject",
                                  .title = "DAWproject 1.0",
                                  .canRead = true},
                        .write = interchange::WriteDawProject,
                        .read = interchange::ReadDawProject},
    interchange::Format{.facts = {.kind = InterchangeKind::Otio,
                                  .name = "otio",
                                  .title = "OpenTimelineIO",
                                  .canRead = true},
                        .write = interchange::WriteOtio,
                        .read = interchange::ReadOtio},
    interchange::Format{.facts = {.kind = InterchangeKind::Otioz,
                                  .name = "otioz",
                                  .title = "OpenTimelineIO with its media (ZIP)",
                                  .canRead = true},
                        .write = interchange::WriteOtioz,
                        .read = interchange::ReadOtioz},
    interchange::Format{.facts = {.kind = InterchangeKind::Ardour,
                                  .name = "ardour",
                                  .title = "an Ardour 7 session",
                                  .writesFolder = true},
                        .write = interchange::WriteArdour},
    interchange::Format{.facts = {.kind = InterchangeKind::Csv,
                                  .name = "csv",
                                  .title = "clips and markers as a table (CSV)"},
                        .write = interchange::WriteCsv},
    interchange::Format{.facts = {.kind = InterchangeKind::Edl,
                                  .name = "edl",
                                  .title = "edit decision lists (CMX3600)"},
                        .write = interchange::WriteEdl},
    interchange::Format{
        .facts = {.kind = InterchangeKind::Rpp, .name = "rpp", .title = "a REAPER project"},
        .write = interchange::WriteRpp},
};

const auto kFactsOfKinds = [] {
    std::array<InterchangeKindFacts, kFormats.size()> facts;
    std::ranges::transform(kFormats, facts.begin(), &interchange::Format::facts);
    return facts;
}();

const interchange::Format* FindFormat(InterchangeKind kind) {
    const auto* const format = std::ranges::find(
        kFormats, kind, [](const interchange::Format& entry) { return entry.facts.kind; });
    return format != kFormats.end() ? format : nullptr;
}

/// Runs a conversion and takes over its report. Only std::bad_alloc gets through.
template <class Result, class Convert>
void Run(Result& result, interchange::Reporter& reporter, const std::filesystem::path& file,
         const Convert& convert) {
    try {
        convert();
        result.ok = true;
    } catch (const interchange::Failure& failure) {
        result.messages.push_back(failure.What());
    } catch (const interchange::Cancelled&) {
        result.cancelled = true;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        result.messages.push_back({.file = file.string(), .what = failure.what()});
    }
    std::ranges::move(reporter.TakeWarnings(), std::back_inserter(result.messages));
    result.report = reporter.TakeReport();
}

}  // namespace

std::span<const InterchangeKindFacts> InterchangeKinds() {
    return kFactsOfKinds;
}

bool InterchangeReport::IsFaithful() const {
    return Count(Fidelity::Lost) + Count(Fidelity::Approximated) + Count(Fidelity::Guessed) == 0;
}

ExportResult ExportSession(const Session& session, InterchangeKind kind,
                           const std::filesystem::path& target, const ExportOptions& options) {
    ExportResult result;
    interchange::Reporter reporter(options.factLimit);
    Run(result, reporter, target, [&] {
        const interchange::Format* const format = FindFormat(kind);
        if (format == nullptr) {
            throw interchange::Failure({.what = "no such kind of file"});
        }
        interchange::Outputs outputs;
        interchange::MediaFacts media(session, options.conventions, reporter);
        format->write({.session = session,
                       .target = target,
                       .options = options,
                       .reporter = reporter,
                       .media = media,
                       .outputs = outputs});
        if (options.strict && !reporter.Report().IsFaithful()) {
            throw interchange::Failure(
                {.file = target.string(),
                 .what = "was not written, because something would be lost",
                 .advice = "see the report; without strictness it is written"});
        }
        result.files = outputs.Commit();
    });
    return result;
}

ImportResult ImportSession(const std::filesystem::path& file, InterchangeKind kind,
                           const ImportOptions& options) {
    ImportResult result;
    interchange::Reporter reporter(options.factLimit);
    Run(result, reporter, file, [&] {
        const interchange::Format* const format = FindFormat(kind);
        if (format == nullptr || format->read == nullptr) {
            throw interchange::Failure({.what = "files of this kind cannot be read"});
        }
        result.session = format->read({.file = file, .options = options, .reporter = reporter});
    });
    return result;
}

std::ostream& operator<<(std::ostream& out, Fidelity fidelity) {
    static constexpr std::array kWords = {"lost", "approximated", "guessed", "moved"};
    static_assert(kWords.size() == kFidelities.size());
    return out << kWords[static_cast<std::size_t>(fidelity)];
}

std::ostream& operator<<(std::ostream& out, const InterchangeFact& fact) {
    out << fact.place << ": " << fact.fidelity << ": " << fact.what;
    return fact.value.empty() ? out : out << ": " << fact.value;
}

}  // namespace orvo
