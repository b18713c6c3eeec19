#pragma once

#include <string>
#include <xercesc/framework/LocalFileInputSource.hpp>

#include "plugin/xml/DocumentWatch.h"

namespace tses {

/// A session file as the parser reads it. It makes its own stream: the file is opened only
/// if it is a regular one, and read only if it still is: that is asked again of the opened file,
/// and to open it never waits, so that it can be exchanged in between for nothing that matters. All
/// that is read goes past the watch, which must outlive the parse.
///
/// A parser that fails may forget its stream, or hold it until its own end; so a source is to
/// outlive the parser, and then closes what is left.
class SessionInputSource final : public xercesc::LocalFileInputSource {
public:
    SessionInputSource(const std::u16string& path, DocumentWatch& watch);
    ~SessionInputSource() override;
    SessionInputSource(const SessionInputSource&) = delete;
    SessionInputSource& operator=(const SessionInputSource&) = delete;

    /// The opened stream, owned by the parser; null if there is no such regular file to be read,
    /// which the parser then reports as an error. To be called once.
    xercesc::BinInputStream* makeStream() const override;

private:
    class Stream;

    std::string systemPath_;
    DocumentWatch& watch_;
    mutable Stream* stream_ = nullptr;  // while it lives
};

}  // namespace tses
