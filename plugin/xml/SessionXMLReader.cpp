#include "plugin/xml/SessionXMLReader.h"

#include <boost/thread/lock_guard.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/FailureTrace.h"
#include "plugin/xml/SessionInputSource.h"
#include "plugin/xml/SessionParser.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {
namespace {

/// A lack of memory may have ended the parse; then there is none for the message either.
void TraceLibraryMessage(const XMLCh* message) noexcept {
    try {
        kelcore::trace::Write(kelcore::trace::kReaderCategory,
                              "XMLReader exception message is: \n" + TranscodeMessage(message));
    } catch (...) {
        kelcore::trace::Write(kelcore::trace::kReaderCategory, "XMLReader exception");
    }
}

}  // namespace

SessionXMLReader::SessionXMLReader(SAXContentHandler* contentHandler, SAXErrorHandler* errorHandler)
    : handler_(contentHandler, errorHandler) {
    if (IsXercesStarted()) {
        parser_ = std::make_unique<SessionParser>(handler_);
    }
}

SessionXMLReader::~SessionXMLReader() = default;

bool SessionXMLReader::Parse(const std::u16string& path) noexcept {
    try {
        const boost::lock_guard<boost::recursive_mutex> guard(lock_);
        if (!IsXercesStarted() || parser_ == nullptr || !kelcore::File(path).Exists()) {
            return false;
        }
        ParseDocument(OpenablePath(path));
        return !handler_.SawFatalError();
    } catch (const xercesc::XMLException& failure) {
        TraceLibraryMessage(failure.getMessage());
    } catch (const xercesc::SAXParseException& failure) {
        TraceLibraryMessage(failure.getMessage());
    } catch (...) {
        kelcore::trace::Write(kelcore::trace::kReaderCategory, "Unexpected XMLReader Exception");
        TraceFailure(kelcore::trace::kReaderCategory);
    }
    return false;
}

void SessionXMLReader::ParseDocument(const std::u16string& path) {
    const SessionInputSource& source = sources_.emplace_back(path, handler_.Watch());
    handler_.BeforeParse(source.getSystemId());
    parser_->parse(source);
}

std::u16string OpenablePath(const std::u16string& path) {
    return path.size() >= kLongPathLength ? kelcore::FileUtils::PrepAsLongPathName(path) : path;
}

}  // namespace tses
