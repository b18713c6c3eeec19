#pragma once

#include <boost/thread/recursive_mutex.hpp>
#include <list>
#include <memory>
#include <string>

#include "plugin/xml/SAXHandlers.h"
#include "plugin/xml/SessionInputSource.h"
#include "plugin/xml/SessionXMLDefaultHandler.h"

namespace tses {

class SessionParser;

/// Parses session files into the events of the handlers, which must outlive it. The XML library
/// should have been started; if it was not, nothing parses.
class SessionXMLReader {
public:
    SessionXMLReader(SAXContentHandler* contentHandler, SAXErrorHandler* errorHandler);
    ~SessionXMLReader();
    SessionXMLReader(const SessionXMLReader&) = delete;
    SessionXMLReader& operator=(const SessionXMLReader&) = delete;

    /// Parses the file at `path` and returns whether it was read to its end. Nothing is thrown:
    /// what the handlers or the parser throw ends the parse and is traced in the reader's category.
    /// Nothing is reported of a missing file and of a folder. Concurrent calls run one after the
    /// other.
    bool Parse(const std::u16string& path) noexcept;

    /// Whether the parse has opened its file. Asked of a reader after its first parse.
    bool HasOpenedFile() const noexcept { return handler_.Watch().HasOpenedFile(); }

private:
    void ParseDocument(const std::u16string& path);

    SessionXMLDefaultHandler handler_;
    std::list<SessionInputSource> sources_;  // of all parses; they outlive the parser
    std::unique_ptr<SessionParser> parser_;
    boost::recursive_mutex lock_;
};

/// Paths of this many code units and more are opened in the platform's form for long paths.
inline constexpr std::size_t kLongPathLength = 260;

/// The path as it is opened.
std::u16string OpenablePath(const std::u16string& path);

}  // namespace tses
