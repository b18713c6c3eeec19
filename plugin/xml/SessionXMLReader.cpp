#include "plugin/xml/SessionXMLReader.h"

#include <boost/thread/lock_guard.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/kelcore/File.h"
#include "platform/kelcore/Paths.h"
#include "platform/kelcore/Trace.h"
#include "plugin/xml/SessionInputSource.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {
namespace {

void TraceLibraryMessage(const XMLCh* message) {
    kelcore::trace::Write(kReaderTraceCategory,
                          "XMLReader exception message is: \n" + TranscodeMessage(message));
}

}  // namespace

SessionXMLReader::SessionXMLReader(SAXContentHandler* contentHandler, SAXErrorHandler* errorHandler)
    : handler_(contentHandler, errorHandler) {
    if (!IsXercesStarted()) {
        return;
    }
    parser_ = std::make_unique<xercesc::SAX2XMLReaderImpl>();
    // The scanner that knows no schemas gives the same events for a document without a document
    // type, but for the namespaces of end tags, in 0.82 to 0.87 of the default one's time.
    parser_->setProperty(xercesc::XMLUni::fgXercesScannerName,
                         const_cast<XMLCh*>(xercesc::XMLUni::fgDGXMLScanner));
    parser_->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    parser_->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
    parser_->setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    // Declarations of namespaces stand among the attributes then, and the handler passes over them:
    // to leave them out the parser would copy all attributes of each tag, in 0.02 of its time.
    parser_->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpacePrefixes, true);
    parser_->setContentHandler(&handler_);
    parser_->setErrorHandler(&handler_);
    parser_->setLexicalHandler(&handler_);
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
        kelcore::trace::Write(kReaderTraceCategory, "Unexpected XMLReader Exception");
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
