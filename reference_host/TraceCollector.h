#pragma once

#include <string>
#include <vector>

#include "platform/kelcore/Trace.h"

namespace refhost {

/// While it lives, collects the trace lines in which the plug-in says why a read or a save failed,
/// whether their categories are on or off. Other lines go to standard error. The destructor
/// restores the categories and the output. Only one collector at a time in a process.
class TraceCollector {
public:
    /// `lines` must outlive the collector.
    explicit TraceCollector(std::vector<std::string>& lines);
    ~TraceCollector();
    TraceCollector(const TraceCollector&) = delete;
    TraceCollector& operator=(const TraceCollector&) = delete;

private:
    kelcore::trace::Output formerOutput_;
    bool readerWasEnabled_;
    bool writerWasEnabled_;
};

}  // namespace refhost
