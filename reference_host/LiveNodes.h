#pragma once

#include <cstddef>

namespace refhost {

/// The number of counted objects of the reference host in the process: nodes, host strings, log
/// targets and file references. If it is above zero when all work is done, somebody never gave back
/// a reference. The plug-in holds the context of a write until its next call.
std::size_t LiveNodes();

/// Counts its owner as alive.
class LiveNode {
public:
    LiveNode();
    ~LiveNode();
    LiveNode(const LiveNode&) = delete;
    LiveNode& operator=(const LiveNode&) = delete;
};

}  // namespace refhost
