#pragma once
// Ownership of COM interface pointers and of the thread's COM apartment.
#include <objbase.h>

#include <utility>

#include "sys/win32/windows_api.h"

namespace kx::win32 {

// Holds one reference to a COM interface and releases it once.
template <typename T>
class com_ptr {
 public:
  com_ptr() = default;
  ~com_ptr() { reset(); }
  com_ptr(const com_ptr&) = delete;
  com_ptr& operator=(const com_ptr&) = delete;
  com_ptr(com_ptr&& o) noexcept : p_(std::exchange(o.p_, nullptr)) {}
  com_ptr& operator=(com_ptr&& o) noexcept {
    if (this != &o) {
      reset();
      p_ = std::exchange(o.p_, nullptr);
    }
    return *this;
  }

  T* get() const { return p_; }
  T* operator->() const { return p_; }
  explicit operator bool() const { return p_ != nullptr; }
  // The slot a creating call writes its new reference into.
  T** put() {
    reset();
    return &p_;
  }
  void reset() {
    if (p_) p_->Release();
    p_ = nullptr;
  }
  // Another interface of the same object; empty when it has none.
  template <typename U>
  com_ptr<U> as() const {
    com_ptr<U> out;
    if (p_) p_->QueryInterface(__uuidof(U), reinterpret_cast<void**>(out.put()));
    return out;
  }

 private:
  T* p_ = nullptr;
};

// COM on this thread for the object's life: a single-threaded apartment,
// left again only when this object entered it.
class ComApartment {
 public:
  ComApartment() : entered_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComApartment() {
    if (entered_) ::CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool entered_;
};

}  // namespace kx::win32
