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

/// Parses session files and passes their events to the handlers, which must outlive it. If the XML
/// library was not started before, every parse fails.
class SessionXMLReader {
public:
    SessionXMLReader(SAXContentHandler* contentHandler, SAXErrorHandler* errorHandler);
    ~SessionXMLReader();
    SessionXMLReader(const SessionXMLReader&) = delete;
    SessionXMLReader& operator=(const SessionXMLReader&) = delete;

    /// Parses the file at `path` and returns whether it was read to its end. What the handlers or
    /// the parser throw ends the parse and is traced in the reader's category. A missing file or a
    /// folder is not reported. Concurrent calls run one after the other.
    bool Parse(const std::u16string& path) noexcept;

    /// Whether the parse opened its file. Call it after the reader's first parse.
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

/// The form of `path` in which the file is opened.
std::u16string OpenablePath(const std::u16string& path);

}  // namespace tses
