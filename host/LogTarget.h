#pragma once

#include "host/HostObject.h"

namespace tses {

/// Takes the messages of the parser of session files.
struct IHostLogTarget : IHostObject {
    virtual void UnusedSlot3() = 0;
    virtual void UnusedSlot4() = 0;
    virtual void UnusedSlot5() = 0;
    virtual void UnusedSlot6() = 0;
    virtual void UnusedSlot7() = 0;
    virtual void UnusedSlot8() = 0;
    /// One warning or error with its line and column, ended by a line end. With 0 for both, it says
    /// why the file cannot be read: "XML FATAL ERROR: (line: 0, col: 0) [ /a.orvo] no such file:
    /// check the path". The text is the plug-in's object: a host that keeps it beyond the call adds
    /// a reference.
    virtual void LogMessage(IHostString* text) = 0;

protected:
    ~IHostLogTarget() = default;
};

}  // namespace tses
