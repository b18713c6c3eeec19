#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/HostObject.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/HostString.h"
#include "reference_host/LiveNodes.h"
#include "reference_host/Ref.h"

namespace refhost {

/// A counted thing of the host, behind the interface objects that the plug-in holds.
///
/// Nodes form a tree. A parent makes a child when it is first asked for, and returns the same one
/// for as long as somebody holds it; meanwhile the child holds its parent. A child that was
/// returned but never referenced stays until its parent goes, so that it outlives the call that
/// returned it.
class Node {
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    void AddReference();

    /// The last reference destroys the node. Ends the process if there is no reference to give
    /// back.
    void Release() noexcept;

    /// Keeps the node until its parent goes, even after its last reference: for objects that are
    /// used without a reference.
    void StayWithParent() { staysWithParent_ = true; }

    /// Tells the root that the plug-in begins a part of the session below this node.
    virtual void ReportPart() const {
        if (parent_ != nullptr) {
            parent_->ReportPart();
        }
    }

    /// A host string for a query to return. This node keeps it until the next call of `GiveOut`.
    tses::IHostString* GiveOut(std::u16string text);

protected:
    /// Which of its parent's things a child is: the tag of a member and, for a list, the index in
    /// it.
    using Place = std::pair<const void*, std::size_t>;

    Node() = default;
    virtual ~Node() = default;

    /// The child in a place of this node. If there is none, `make` makes it.
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
    bool staysWithParent_ = false;
    std::map<Place, std::unique_ptr<Node, Deleter>> children_;
    Ref<HostString> givenOut_;
};

/// Tells the members of the model apart.
template <auto member>
inline constexpr char kTagOf = 0;

/// The value in an optional; any other value is returned as it is.
template <class Value>
Value& Held(Value& value) {
    return value;
}
template <class Value>
Value& Held(std::optional<Value>& value) {
    return *value;
}

/// Makes the value in an empty optional; does nothing to other values.
template <class Value>
void Fill(Value&) {}
template <class Value>
void Fill(std::optional<Value>& value) {
    if (!value) {
        value.emplace();
    }
}

/// Whether there is a value: always, except for an empty optional.
template <class Value>
bool IsThere(const Value&) {
    return true;
}
template <class Value>
bool IsThere(const std::optional<Value>& value) {
    return value.has_value();
}

/// A node for a part of the model. It looks the part up at each use, because the container of the
/// part may have grown.
template <class Data>
class DataNode : public Node {
public:
    using Locate = std::function<Data&()>;

    explicit DataNode(Locate locate) : locate_(std::move(locate)) {}

    Data& Value() const { return locate_(); }

    /// The node of something in this node's part. `find` finds it there; the tag and the index
    /// distinguish it from other things.
    template <class Child, class Find>
    Child& NodeAt(const void* tag, std::size_t index, Find find) {
        const auto make = [this, find]() {
            typename Child::Locate locate = [this, find]() -> decltype(auto) {
                return find(Value());
            };
            return new Child(std::move(locate));
        };
        return this->template ChildAt<Child>({tag, index}, make);
    }

    /// The node of a member, which must exist.
    template <class Child, auto member>
    Child& PartNode() {
        return NodeAt<Child>(&kTagOf<member>, 0,
                             [](Data& value) -> decltype(auto) { return Held(value.*member); });
    }

    /// The node of an element of a list, which must exist.
    template <class Child, auto member>
    Child& ElementNode(std::size_t index) {
        return NodeAt<Child>(&kTagOf<member>, index, [index](Data& value) -> decltype(auto) {
            auto& list = value.*member;
            return Held(list[index]);
        });
    }

private:
    Locate locate_;
};

/// A code of the model as a number of the host's interfaces.
template <class Code>
auto NumberOf(Code code) {
    return static_cast<std::underlying_type_t<Code>>(code);
}

template <class Element>
kelcore::uint32 CountOf(const std::vector<Element>& list) {
    return static_cast<kelcore::uint32>(list.size());
}

/// One of the interface objects of a node. References are counted by the node.
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
    tses::IHostString* GiveOut(const std::string& text) const {
        return node_.GiveOut(kelcore::UTF8to16(text));
    }

    /// For editing: returns a member, and makes it if it is missing.
    template <class Child, auto member>
    auto* Made() const {
        Fill(Value().*member);
        return &node_.template PartNode<Child, member>().Edit();
    }

    /// For editing: appends a new element to a list.
    template <class Child, auto member>
    auto* Appended() const {
        node_.ReportPart();
        auto& list = Value().*member;
        Fill(list.emplace_back());
        return &node_.template ElementNode<Child, member>(list.size() - 1).Edit();
    }

    /// For querying: a member; null if it is missing.
    template <class Child, auto member>
    auto* Found() const {
        return IsThere(Value().*member) ? &node_.template PartNode<Child, member>().Query()
                                        : nullptr;
    }

    /// For querying: an element of a list; null if it is missing or beyond the end.
    template <class Child, auto member>
    auto* FoundAt(std::size_t index) const {
        const auto& list = Value().*member;
        return index < list.size() && IsThere(list[index])
                   ? &node_.template ElementNode<Child, member>(index).Query()
                   : nullptr;
    }

private:
    DataNode<Data>& node_;
};

/// A node that shows a part of the model to the plug-in, through one face for reading a file into
/// it and another for writing it to a file. A single class cannot be both, because the two
/// interfaces have operations of the same names.
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

/// The same for what the plug-in only queries.
template <class Data, class QueryFace>
class QueryNode final : public DataNode<Data> {
public:
    using DataNode<Data>::DataNode;

    QueryFace& Query() { return query_; }

private:
    QueryFace query_{*this};
};

}  // namespace refhost
