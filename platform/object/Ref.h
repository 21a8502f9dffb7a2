#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace platform {

// A counted reference to an object that counts its own holders (RefCounted). Copying shares, moving hands
// over; the object ends when its last Ref does. Not for use across threads: a session has one user-interface
// thread, and objects belong to it.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): nothing is a value of every Ref
  explicit Ref(T* object) : object_(object) { Hold(); }
  Ref(const Ref& other) : object_(other.object_) { Hold(); }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U>
  requires std::convertible_to<U*, T*> Ref(const Ref<U>& other)
      : object_(other.Get()) {  // NOLINT(google-explicit-constructor): derived to base
    Hold();
  }
  ~Ref() {
    if (object_ != nullptr) object_->Release();
  }
  // By value, and swapped: the old object goes only after this Ref already holds the new one.
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const Ref& left, const Ref& right) { return left.object_ == right.object_; }

 private:
  void Hold() {
    if (object_ != nullptr) object_->Retain();
  }

  T* object_ = nullptr;
};

template <class T, class... Arguments>
Ref<T> MakeRef(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

// The counting half of Ref. The count starts at 0 and belongs to the Refs alone.
class RefCounted {
 public:
  RefCounted() = default;
  RefCounted(const RefCounted&) = delete;
  RefCounted& operator=(const RefCounted&) = delete;
  RefCounted(RefCounted&&) = delete;
  RefCounted& operator=(RefCounted&&) = delete;
  virtual ~RefCounted() = default;

  void Retain() noexcept { ++holders_; }
  void Release() noexcept {
    if (--holders_ == 0) delete this;
  }
  std::size_t Holders() const { return holders_; }

 private:
  std::size_t holders_ = 0;
};

}  // namespace platform
