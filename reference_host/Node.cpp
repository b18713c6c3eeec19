#include "reference_host/Node.h"

namespace refhost {

void Node::AddReference() {
    if (++references_ == 1 && parent_ != nullptr) {
        parent_->AddReference();
    }
}

void Node::Release() noexcept {
    if (references_ == 0) {
        EndAtExcessRelease();
    }
    if (--references_ != 0) {
        return;
    }
    if (parent_ == nullptr) {
        delete this;
        return;
    }
    Node* const parent = parent_;
    if (!staysWithParent_) {
        parent->children_.erase(Place(place_));
    }
    parent->Release();
}

tses::IHostString* Node::GiveOut(std::u16string text) {
    givenOut_ = Ref<HostString>::Adopt(new HostString(std::move(text)));
    return givenOut_.Get();
}

}  // namespace refhost
