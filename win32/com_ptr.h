// Owns a reference to a COM object.
//
// Tested by everything in tests/win32/.
#pragma once

#include <windows.h>
#include <unknwn.h>

#include <utility>

namespace tintline {

template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    ComPtr(std::move(other)).swap(*this);
    return *this;
  }
  ComPtr(const ComPtr&) = delete;  // sharing is said: share()
  ComPtr& operator=(const ComPtr&) = delete;
  ~ComPtr() {
    if (object_ != nullptr) object_->Release();
  }

  // Takes over the reference that the caller holds.
  static ComPtr adopt(Interface* object) {
    ComPtr owner;
    owner.object_ = object;
    return owner;
  }
  // Takes a reference of its own.
  static ComPtr share(Interface* object) {
    if (object != nullptr) object->AddRef();
    return adopt(object);
  }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  void reset() { ComPtr().swap(*this); }
  void swap(ComPtr& other) noexcept { std::swap(object_, other.object_); }

  // For functions that give a reference out; what was held before is let go.
  Interface** put() {
    reset();
    return &object_;
  }
  void** putVoid() { return reinterpret_cast<void**>(put()); }

  // The object's other interface, or an empty pointer.
  template <class Other>
  ComPtr<Other> query() const {
    ComPtr<Other> other;
    if (object_ == nullptr || FAILED(object_->QueryInterface(__uuidof(Other), other.putVoid())))
      return {};
    return other;
  }

 private:
  Interface* object_ = nullptr;
};

}  // namespace tintline
