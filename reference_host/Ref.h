#pragma once

#include <utility>

namespace refhost {

/// Holds one reference to a counted object, a node or any host interface; may be null.
template <class Counted>
class Ref {
public:
    Ref() = default;
    Ref(const Ref& other) : object_(other.object_) {
        if (object_ != nullptr) {
            object_->AddReference();
        }
    }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref() { Reset(); }

    /// Adds a reference to `object`, which may be null.
    [[nodiscard]] static Ref Retain(Counted* object) {
        if (object != nullptr) {
            object->AddReference();
        }
        return Adopt(object);
    }

    /// Takes over a reference that the caller holds.
    [[nodiscard]] static Ref Adopt(Counted* object) {
        Ref ref;
        ref.object_ = object;
        return ref;
    }

    void Reset() {
        if (Counted* const object = std::exchange(object_, nullptr)) {
            object->Release();
        }
    }

    Counted* Get() const { return object_; }
    Counted* operator->() const { return object_; }
    Counted& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    Counted* object_ = nullptr;
};

}  // namespace refhost
