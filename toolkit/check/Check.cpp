#include <orvo/Check.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <tuple>
#include <utility>
#include <variant>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Strings.h"
#include "session/PluginTurn.h"
#include "toolkit/CharacterPlaces.h"
#include "toolkit/DocumentScan.h"
#include "toolkit/FileContent.h"
#include "toolkit/FileKind.h"
#include "toolkit/FileNames.h"
#include "toolkit/MediaPaths.h"
#include "toolkit/check/Codes.h"
#include "toolkit/check/DocumentCheck.h"
#include "toolkit/check/DocumentPlaces.h"
#include "toolkit/check/MediaCheck.h"
#include "toolkit/check/ModelCheck.h"
#include "toolkit/check/ModelPlaces.h"

namespace orvo {
namespace {

using toolkit::Code;
using toolkit::Describe;

Finding MakeFinding(Code code, std::string what) {
    const CheckCode& kind = Describe(code);
    return {.severity = kind.severity, .code = std::string(kind.code), .what = std::move(what)};
}

std::string WithAdvice(const std::string& what, const std::string& advice) {
    return advice.empty() ? what : what + ": " + advice;
}

Finding FromProblem(Code code, const toolkit::Problem& problem) {
    Finding finding = MakeFinding(code, WithAdvice(problem.what, problem.advice));
    finding.line = problem.place.line;
    finding.column = problem.place.column;
    return finding;
}

std::vector<toolkit::ModelFinding> FindInModel(const Session& session,
                                               const CheckOptions& options) {
    std::vector<toolkit::ModelFinding> findings = toolkit::CheckModel(session);
    if (options.media) {
        std::ranges::move(toolkit::CheckMedia(session,
                                              [](const std::string& path) {
                                                  return toolkit::ReadMediaProperties(path);
                                              }),
                          std::back_inserter(findings));
    }
    return findings;
}

Finding FromModel(toolkit::ModelFinding found) {
    Finding finding = MakeFinding(found.code, std::move(found.what));
    finding.path = std::move(found.path);
    return finding;
}

// Session files

/// A finding and what it speaks of in the document.
struct Spot {
    std::size_t element;
    std::u16string attribute;  ///< empty: the element
    Finding finding;
};

auto PlaceOrder(const Spot& spot) {
    return std::tuple(spot.finding.line, spot.finding.column);
}

class FileCheck {
public:
    FileCheck(const std::filesystem::path& file, const CheckOptions& options)
        : file_(file), options_(options) {}

    CheckResult Run() && {
        const ReadResult read = ReadSession(file_);
        result_.isRead = read.ok;
        const toolkit::DocumentScan scan = Scan();
        if (scan.problem) {
            result_.findings.push_back(FromProblem(CodeOf(*scan.problem), *scan.problem));
            return std::move(result_);
        }
        std::vector<toolkit::ModelFinding> found;
        if (read) {
            found = FindInModel(read.session, options_);
        } else if (scan.endTheRead.empty()) {
            AddRefusal(read.messages);
        }
        if (!found.empty() || !scan.notCarried.empty()) {
            AddWithPlaces(scan, std::move(found));
        }
        return std::move(result_);
    }

private:
    toolkit::DocumentScan Scan() const {
        if (const auto otherKind = toolkit::RecogniseOtherKind(file_.string())) {
            toolkit::DocumentScan scan;
            scan.problem = otherKind;
            return scan;
        }
        constexpr auto kAll = static_cast<std::size_t>(-1);
        const auto turn = WaitForTurn();
        const toolkit::LibraryUse library;
        return result_.isRead ? toolkit::ScanFileBesideRead(library, file_.string(), {}, kAll)
                              : toolkit::ScanDocument(file_.string(), {}, kAll);
    }

    Code CodeOf(const toolkit::Problem& problem) const {
        if (problem.isMalformed) {
            return Code::NotWellFormed;
        }
        const toolkit::FileBlocks opened(file_.string());
        return opened.Failure() ? Code::Unreadable : Code::NotASession;
    }

    void AddRefusal(const std::vector<Message>& messages) {
        for (const Message& message : messages) {
            const toolkit::Place place =
                toolkit::InCharactersOfFile(file_.string(), {message.line, message.column});
            result_.findings.push_back(
                FromProblem(Code::NotASession, {place, message.what, message.advice}));
        }
    }

    void AddWithPlaces(const toolkit::DocumentScan& scan,
                       std::vector<toolkit::ModelFinding> found) {
        auto content = toolkit::ReadFileContent(file_.string());
        if (const auto* const problem = std::get_if<toolkit::Problem>(&content)) {
            result_.findings.push_back(FromProblem(Code::Unreadable, *problem));
            return;
        }
        const auto encoding = EncodingOf(std::get<std::string>(content));
        if (!encoding) {
            AddPlain(scan);
            return;
        }
        const toolkit::EditedDocument document(std::get<std::string>(std::move(content)),
                                               *encoding);
        std::vector<Spot> spots;
        for (const toolkit::NotCarried& loss : scan.notCarried) {
            spots.push_back(SpotOf(loss, document));
        }
        if (!found.empty()) {
            AddModel(std::move(found), document, spots);
        }
        FindPlaces(document, spots);
        for (Spot& spot : spots) {
            result_.findings.push_back(std::move(spot.finding));
        }
    }

    static std::optional<toolkit::DocumentEncoding> EncodingOf(std::string_view content) {
        const auto turn = WaitForTurn();
        return toolkit::DocumentEncoding::Of(content);
    }

    static Spot SpotOf(const toolkit::NotCarried& loss, const toolkit::EditedDocument& document) {
        const std::u16string attribute = loss.attribute.substr(loss.attribute.find(u':') + 1);
        auto [code, what] =
            toolkit::Word(loss, document.Elements()[loss.element].kind, document.Name(loss.element),
                          document.Attribute(loss.element, attribute).value_or(u""));
        return {loss.element, loss.attribute, MakeFinding(code, std::move(what))};
    }

    static void AddModel(std::vector<toolkit::ModelFinding> found,
                         const toolkit::EditedDocument& document, std::vector<Spot>& spots) {
        const toolkit::ModelPlaces places(document);
        for (toolkit::ModelFinding& one : found) {
            toolkit::ModelPlaces::Spot spot = places.Find(one.path);
            spots.push_back({spot.element, std::move(spot.attribute), FromModel(std::move(one))});
        }
    }

    static void FindPlaces(const toolkit::EditedDocument& document, std::vector<Spot>& spots) {
        std::ranges::stable_sort(spots, {}, &Spot::element);
        toolkit::DocumentPlaces places(document);
        for (Spot& spot : spots) {
            const toolkit::Place place = spot.attribute.empty()
                                             ? places.OfElement(spot.element)
                                             : places.OfAttribute(spot.element, spot.attribute);
            spot.finding.line = place.line;
            spot.finding.column = place.column;
        }
        std::ranges::stable_sort(spots, {}, PlaceOrder);
    }

    /// For a document in an encoding that only the scan can read.
    void AddPlain(const toolkit::DocumentScan& scan) {
        for (const toolkit::NotCarried& loss : scan.notCarried) {
            auto [code, what] = toolkit::Word(loss, nullptr, u"", u"");
            result_.findings.push_back(FromProblem(code, {loss.place, std::move(what), ""}));
        }
    }

    const std::filesystem::path& file_;
    const CheckOptions& options_;
    CheckResult result_;
};

// JSON

/// A message about a value begins with its path.
Finding FromJsonMessage(const Message& message) {
    const std::size_t end = message.what.starts_with('/') ? message.what.find(": ") : 0;
    Finding finding = FromProblem(
        message.line != 0 ? Code::NotWellFormed : Code::WrongJson,
        {{message.line, message.column},
         end != 0 && end != message.what.npos ? message.what.substr(end + 2) : message.what,
         message.advice});
    finding.path = message.what.substr(0, end);
    return finding;
}

CheckResult Refused(std::vector<Finding> findings) {
    CheckResult result;
    result.findings = std::move(findings);
    return result;
}

CheckResult CheckJsonFile(const std::filesystem::path& file, const CheckOptions& options) {
    toolkit::FileBlocks blocks(file.string());
    ReadResult read = FromJson([&blocks] { return blocks.Next(); });
    if (blocks.Failure()) {
        return Refused({FromProblem(Code::Unreadable, *blocks.Failure())});
    }
    if (!read) {
        std::vector<Finding> findings;
        std::ranges::transform(read.messages, std::back_inserter(findings), FromJsonMessage);
        return Refused(std::move(findings));
    }
    const std::u16string location = kelcore::UTF8to16(std::filesystem::absolute(file).string());
    if (const auto problem = toolkit::ResolveMediaPaths(read.session, location)) {
        return Refused({FromJsonMessage({.what = problem->what, .advice = problem->advice})});
    }
    return {.isRead = true, .findings = CheckSession(read.session, options)};
}

bool IsJson(const std::filesystem::path& file, const CheckOptions& options) {
    return options.kind == CheckedKind::Json ||
           (options.kind == CheckedKind::ByName &&
            toolkit::ToLower(file.extension().string()) == ".json");
}

}  // namespace

CheckResult CheckFile(const std::filesystem::path& file, const CheckOptions& options) {
    CheckResult result =
        IsJson(file, options) ? CheckJsonFile(file, options) : FileCheck(file, options).Run();
    for (Finding& finding : result.findings) {
        finding.file = file.string();
    }
    return result;
}

std::vector<Finding> CheckSession(const Session& session, const CheckOptions& options) {
    std::vector<Finding> findings;
    for (toolkit::ModelFinding& found : FindInModel(session, options)) {
        findings.push_back(FromModel(std::move(found)));
    }
    return findings;
}

std::ostream& operator<<(std::ostream& out, const Finding& finding) {
    const std::string place =
        finding.line != 0 ? fmt::format("{}:{}", finding.line, finding.column) : finding.path;
    for (const std::string& part : {finding.file, place}) {
        out << part << (part.empty() ? "" : ":");
    }
    out << (finding.file.empty() && place.empty() ? "" : " ");
    return out << finding.severity << ": " << finding.what << " [" << finding.code << ']';
}

}  // namespace orvo
