#include "reference_host/SessionNode.h"

#include <utility>

#include "reference_host/nodes/Session.h"

namespace refhost {

Ref<SessionNode> SessionNode::Make(orvo::Session session) {
    return Ref<SessionNode>::Retain(new SessionNode(std::move(session)));
}

Ref<SessionNode> SessionNode::Borrow(const orvo::Session& session) {
    return Ref<SessionNode>::Retain(new SessionNode(&session));
}

SessionNode::SessionNode(orvo::Session session)
    : DataNode([this]() -> orvo::Session& { return own_; }),
      own_(std::move(session)),
      edit_(std::make_unique<EditSession>(*this)),
      query_(std::make_unique<QuerySession>(*this)) {}

// The cast is safe because queries change nothing. Nodes are made for both directions.
SessionNode::SessionNode(const orvo::Session* borrowed)
    : DataNode([session = const_cast<orvo::Session*>(borrowed)]() -> orvo::Session& {
          return *session;
      }),
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
