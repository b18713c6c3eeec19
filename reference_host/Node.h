#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

protected:
    /// Which of its parent's things a child is: the tag of a member, and the index in it if it is a
    /// list.
    using Place = std::pair<const void*, std::size_t>;

    Node() = default;
    virtual ~Node() = default;

    /// The child in a place of this node, which `make` makes if there is none.
    template <class Child, class Make>
    Child& ChildAt(Place place, Make make) {
        std::unique_ptr<Node, Deleter>& child = children_[place];
        if (child == nullptr) {
            child.reset(make());
            child->parent_ = this;
            child->place_ = place;
        }
        return static_cast<Child&>(*child);
    }

private:
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

/// Tells the members of the model apart.
template <auto member>
inline constexpr char kTagOf = 0;

/// What an optional holds; a value that is always there is itself.
template <class Value>
Value& Held(Value& value) {
    return value;
}
template <class Value>
Value& Held(std::optional<Value>& value) {
    return *value;
}

/// A node for a part of the model, which it asks for at each use: what holds that part may have
/// grown.
template <class Data>
class DataNode : public Node {
public:
    using Locate = std::function<Data&()>;

    explicit DataNode(Locate locate) : locate_(std::move(locate)) {}

    Data& Value() const { return locate_(); }

    /// The node of a member of this node's part, which is there.
    template <class Child, auto member>
    Child& PartNode() {
        return this->template ChildAt<Child>({&kTagOf<member>, 0}, [this] {
            return new Child([this]() -> auto& { return Held(Value().*member); });
        });
    }

    /// The node of an element of a list, which is there.
    template <class Child, auto member>
    Child& ElementNode(std::size_t index) {
        return this->template ChildAt<Child>({&kTagOf<member>, index}, [this, index] {
            return new Child([ this, index ]() -> auto& { return Held((Value().*member)[index]); });
        });
    }

private:
    Locate locate_;
};

template <class Element>
kelcore::uint32 CountOf(const std::vector<Element>& list) {
    return static_cast<kelcore::uint32>(list.size());
}

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
