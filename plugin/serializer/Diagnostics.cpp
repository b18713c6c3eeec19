#include "host/LogTarget.h"
#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/ReadObstacle.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Trace.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/FailureTrace.h"
#include "plugin/xml/SessionXMLReader.h"
#include "plugin/xml/XercesPlatform.h"

// The parser's reports, as the host's log shows them:
//
//     XML ERROR: (line: 12, col: 7) [ /music/song.orvo] the message
//
// The brackets hold the public and the system identifier. They are left out if both are missing. If
// a file cannot be read, line and column are 0, as in the parser's own message about a file that it
// cannot open.

namespace tses {
namespace {

std::u16string Decimal(kelcore::uint64 number) {
    return kelcore::AsciiToUTF16(std::to_string(number));
}

std::u16string Located(std::u16string_view prefix, kelcore::uint64 line, kelcore::uint64 column,
                       std::u16string_view publicId, std::u16string_view systemId,
                       std::u16string_view message) {
    std::u16string text(prefix);
    text.append(Decimal(line)).append(u", col: ").append(Decimal(column)).append(u") ");
    if (!publicId.empty() || !systemId.empty()) {
        text.append(u"[").append(publicId).append(u" ").append(systemId).append(u"] ");
    }
    return text.append(message).append(u"\n");
}

constexpr std::u16string_view kFatalError = u"XML FATAL ERROR: (line: ";

[[noreturn]] void EndParse() {
    throw ReportedFailure("parsing error.");
}

}  // namespace

void Serializer::Impl::Warning(kelcore::uint64 line, kelcore::uint64 column,
                               std::u16string_view publicId, std::u16string_view systemId,
                               std::u16string_view message) {
    Log(Located(u"XML WARNING: (line: ", line, column, publicId, systemId, message));
}

void Serializer::Impl::Error(kelcore::uint64 line, kelcore::uint64 column,
                             std::u16string_view publicId, std::u16string_view systemId,
                             std::u16string_view message) {
    if (Log(Located(u"XML ERROR: (line: ", line, column, publicId, systemId, message))) {
        EndParse();
    }
}

void Serializer::Impl::FatalError(kelcore::uint64 line, kelcore::uint64 column,
                                  std::u16string_view publicId, std::u16string_view systemId,
                                  std::u16string_view message) {
    if (reader_ != nullptr && !reader_->HasOpenedFile()) {
        couldNotOpenFile_ = true;  // the read says why
        return;
    }
    std::u16string text = Located(kFatalError, line, column, publicId, systemId, message);
    if (Log(text)) {
        EndParse();
    }
    text.pop_back();
    kelcore::trace::Write(kelcore::trace::kReaderCategory, kelcore::UTF16to8(text));
}

/// Returns whether the host has a log target. An error that nobody sees does not end the parse.
bool Serializer::Impl::Log(std::u16string text) {
    if (!session_) {
        return false;
    }
    const auto target = Retain(session_->GetLogTarget());
    if (!target) {
        return false;
    }
    auto message = MakeHostString(std::move(text));
    target->LogMessage(&*message);
    return true;
}

/// The parser does not report a missing file, nor why it cannot open another one.
std::optional<kelcore::ReadObstacle> Serializer::Impl::FindObstacle() const {
    if (!path_.empty() && !IsXercesStarted()) {
        return kelcore::ReadObstacle{"the XML library did not start",
                                     "initialise the plug-in again"};
    }
    auto obstacle = kelcore::FindReadObstacle(path_);
    if (!obstacle && couldNotOpenFile_) {
        return kelcore::ReadObstacle{"could not be opened", "try again"};
    }
    return obstacle;
}

void Serializer::Impl::SayWhyTheFileCannotBeRead() noexcept {
    try {
        const auto obstacle = FindObstacle();
        if (!obstacle) {
            return;
        }
        const std::u16string file =
            path_.empty() ? path_ : kelcore::PathForMessage(kelcore::File(path_).FullPath());
        const std::string reason = obstacle->what + ": " + obstacle->advice;
        const std::string subject = file.empty() ? "" : kelcore::PathToBytes(file) + ": ";
        kelcore::trace::Write(kelcore::trace::kReaderCategory, subject + reason);
        Log(Located(kFatalError, 0, 0, {}, file, kelcore::UTF8to16(reason)));
    } catch (...) {
        // Memory ran out, or the host threw. The result still reports the failure.
    }
}

}  // namespace tses
