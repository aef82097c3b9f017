#pragma once
// Runs a callable when the scope ends, however it ends.
#include <utility>

namespace kx {

template <typename F>
class scope_exit {
 public:
  explicit scope_exit(F f) : f_(std::move(f)) {}
  ~scope_exit() { f_(); }
  scope_exit(const scope_exit&) = delete;
  scope_exit& operator=(const scope_exit&) = delete;

 private:
  F f_;
};

}  // namespace kx
