#include "reference_host/LiveNodes.h"

#include <atomic>

namespace refhost {
namespace {

std::atomic<std::size_t> liveNodes = 0;

}  // namespace

std::size_t LiveNodes() {
    return liveNodes;
}

LiveNode::LiveNode() {
    ++liveNodes;
}

LiveNode::~LiveNode() {
    --liveNodes;
}

}  // namespace refhost
