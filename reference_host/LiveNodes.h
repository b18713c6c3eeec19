#pragma once

#include <cstddef>

namespace refhost {

/// How many counted objects of the reference host exist in the process: nodes, host strings, log
/// targets, registrars, file references. Anything above zero after all work is a reference that
/// somebody never gave back. The context of a write is held until the plug-in's next call.
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
