#include "cli/files/OrvoFile.h"

#include <functional>
#include <future>
#include <stop_token>
#include <string>
#include <utility>

#include <orvo/Session.h>
#include "cli/RemovalAtSignal.h"
#include "cli/files/ReadProgress.h"
#include "cli/files/Refusals.h"
#include "cli/terminal/Messages.h"
#include "toolkit/DocumentScan.h"
#include "toolkit/FileContent.h"

namespace cli {
namespace {

/// Scans the file in parallel with the plug-in's read, so that both take as long as one. If the
/// read fails, the scan stops soon after: the plug-in refused the file anyway.
class ScanBesideRead {
public:
    ScanBesideRead(const std::string& path, const toolkit::Conversion& conversion,
                   std::size_t limit)
        : path_(path), identity_(toolkit::IdentityOf(path)), scan_(Start(conversion, limit)) {}
    ~ScanBesideRead() { stop_.request_stop(); }
    ScanBesideRead(const ScanBesideRead&) = delete;
    ScanBesideRead& operator=(const ScanBesideRead&) = delete;

    /// Waits for the scan. Call it once, after the read. If the file has been replaced by now, the
    /// two may have seen different files, which is a problem.
    toolkit::DocumentScan Result() {
        toolkit::DocumentScan scan = scan_.get();
        if (!scan.problem && toolkit::IdentityOf(path_) != identity_) {
            scan.problem = {{}, "was changed while it was read", "try again"};
        }
        return scan;
    }

private:
    std::future<toolkit::DocumentScan> Start(const toolkit::Conversion& conversion,
                                             std::size_t limit) const {
        const WithoutSignals inherited;
        return std::async(toolkit::ScanFileBesideRead, std::cref(library_), path_, conversion,
                          limit, stop_.get_token());
    }

    toolkit::LibraryUse library_;  // started before the read, and stopped after it
    std::string path_;
    std::optional<toolkit::FileIdentity> identity_;
    std::stop_source stop_;
    std::future<toolkit::DocumentScan> scan_;  // waits in its destructor
};

}  // namespace

bool MayConvert(const SessionFile& file, const toolkit::DocumentScan& scan, const LossRule& rule) {
    if (scan.problem) {
        Complain(ToMessage(file.Name(), *scan.problem));
        RefuseConversion(file.Name());
        return false;
    }
    NameLosses(file.Name(), scan.notCarried, scan.notCarriedCount);
    if (scan.notCarriedCount != 0 && !rule.lossy) {
        RefuseLosses(file.Name());
        return false;
    }
    return true;
}

std::optional<ReadInput> ReadOrvo(const SessionFile& file, const toolkit::Conversion& conversion,
                                  const LossRule& rule, Progress& progress) {
    const Progress::Phase reading = progress.Begin(kReading);
    reading.Watch(ShareRead(file.Path()));
    std::optional<ScanBesideRead> scan(std::in_place, file.Path(), conversion, rule.Limit());
    orvo::ReadResult read = orvo::ReadSession(file.FullName());
    if (!read) {
        scan.reset();
        for (const Message& message : ExplainRefusal(file, read.messages)) {
            Complain(message);
        }
        return std::nullopt;
    }
    if (!MayConvert(file, scan->Result(), rule)) {
        return std::nullopt;
    }
    return ReadInput{std::move(read.session), static_cast<kelcore::uint64>(SizeOrOne(file.Path()))};
}

}  // namespace cli
