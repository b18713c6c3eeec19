#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "host/HostObject.h"
#include "reference_host/HostString.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Ref.h"

namespace refhost {

/// A counted thing of the host: what stands behind the interface objects that the plug-in holds.
///
/// Nodes form a tree. A parent makes a child when it is first asked for and gives out the same one
/// for as long as somebody holds it; the child holds its parent meanwhile. A child that was given
/// out and not referenced stays until its parent goes, so that it outlives the call it came from.
class Node {
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    void AddReference();

    /// The last reference destroys the node. Ends the process when there is none to give back.
    void Release() noexcept;

    /// A host string for a query to return, kept alive by this node until its next one.
    tses::IHostString* GiveOut(std::u16string text);

    /// The child in a place of this node, which `make` makes if there is none.
    template <class Child, class Make>
    Child& ChildAt(int role, std::size_t index, Make make) {
        std::unique_ptr<Node, Deleter>& child = children_[{role, index}];
        if (child == nullptr) {
            child.reset(make());
            child->parent_ = this;
            child->place_ = {role, index};
        }
        return static_cast<Child&>(*child);
    }

protected:
    Node() = default;
    virtual ~Node() = default;

private:
    /// Which of its parent's things a child is, and which of several.
    using Place = std::pair<int, std::size_t>;
    struct Deleter {
        void operator()(Node* node) const { delete node; }
    };

    const LiveNode live_;
    std::size_t references_ = 0;
    Node* parent_ = nullptr;
    Place place_{};
    std::map<Place, std::unique_ptr<Node, Deleter>> children_;
    Ref<HostString> givenOut_;
};

/// A node for a part of the model, which it asks for at each use: what holds that part may have
/// grown.
template <class Data>
class DataNode : public Node {
public:
    using Locate = std::function<Data&()>;

    explicit DataNode(Locate locate) : locate_(std::move(locate)) {}

    Data& Value() const { return locate_(); }

private:
    Locate locate_;
};

/// One of the interface objects of a node. The node is what is counted.
template <class Interface, class Data>
class Face : public Interface {
public:
    explicit Face(DataNode<Data>& node) : node_(node) {}
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;
    virtual ~Face() = default;

    void AddReference() override { node_.AddReference(); }
    void Release() override { node_.Release(); }

protected:
    DataNode<Data>& Owner() const { return node_; }
    Data& Value() const { return node_.Value(); }
    tses::IHostString* GiveOut(const std::u16string& text) const { return node_.GiveOut(text); }

private:
    DataNode<Data>& node_;
};

/// The node that shows a part of the model to the plug-in: through one face for reading a file into
/// it and through another for writing it. One class cannot be both, since operations of the two
/// interfaces have the same names.
template <class Data, class EditFace, class QueryFace>
class TwoFacedNode final : public DataNode<Data> {
public:
    using DataNode<Data>::DataNode;

    EditFace& Edit() { return edit_; }
    QueryFace& Query() { return query_; }

private:
    EditFace edit_{*this};
    QueryFace query_{*this};
};

}  // namespace refhost
