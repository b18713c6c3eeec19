#pragma once

#include <string>
#include <vector>

namespace refhost {

/// While it lives, collects the trace lines in which the plug-in says why a read or a save failed,
/// whether their categories are on or off; lines of others go to standard error. Afterwards the
/// categories are as they were, and all lines go to standard error.
class TraceCollector {
public:
    /// `lines` must outlive the collector.
    explicit TraceCollector(std::vector<std::string>& lines);
    ~TraceCollector();
    TraceCollector(const TraceCollector&) = delete;
    TraceCollector& operator=(const TraceCollector&) = delete;

private:
    bool readerWasEnabled_;
    bool writerWasEnabled_;
};

}  // namespace refhost
