#include "reference_host/SessionNode.h"

#include <utility>

#include "reference_host/nodes/Session.h"

namespace refhost {

Ref<SessionNode> SessionNode::Make(orvo::Session session) {
    return Ref<SessionNode>::Retain(new SessionNode(std::move(session)));
}

SessionNode::SessionNode(orvo::Session session)
    : DataNode([this]() -> orvo::Session& { return session_; }),
      session_(std::move(session)),
      edit_(std::make_unique<EditSession>(*this)),
      query_(std::make_unique<QuerySession>(*this)) {}

SessionNode::~SessionNode() = default;

tses::IEditSession& SessionNode::Edit() {
    return *edit_;
}

tses::IQuerySession& SessionNode::Query() {
    return *query_;
}

void SessionNode::Report(const Progress& progress) {
    reports_.push_back(progress);
    if (listener_) {
        listener_(progress);
    }
}

}  // namespace refhost
