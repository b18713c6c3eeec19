#pragma once

#include <string>
#include <xercesc/framework/LocalFileInputSource.hpp>

#include "plugin/xml/DocumentWatch.h"

namespace tses {

/// A session file as the parser reads it, with a stream of its own. The stream opens only a regular
/// file, checks that again once the file is open, and never waits to open it. So it does no harm if
/// another file takes its place in between. All bytes pass the watch, which must outlive the parse.
///
/// A parser that fails may forget its stream, or hold it until its own end. A source must therefore
/// outlive the parser; it then closes what is left.
class SessionInputSource final : public xercesc::LocalFileInputSource {
public:
    SessionInputSource(const std::u16string& path, DocumentWatch& watch);
    ~SessionInputSource() override;
    SessionInputSource(const SessionInputSource&) = delete;
    SessionInputSource& operator=(const SessionInputSource&) = delete;

    /// Returns the opened stream, which the parser owns. Returns null if there is no regular file
    /// that can be read; the parser then reports that as an error. Call it once.
    xercesc::BinInputStream* makeStream() const override;

private:
    class Stream;

    std::string systemPath_;
    DocumentWatch& watch_;
    mutable Stream* stream_ = nullptr;  // while it lives
};

}  // namespace tses
