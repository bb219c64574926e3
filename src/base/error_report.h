#pragma once

#include <string_view>

#include "base/failure.h"

namespace lumowatt {

/// Prints what failed and why on the standard error, as one line after the program's name:
/// "lumowatt: cannot start a timer: Too many open files". The reason is omitted if it is empty.
/// Allocates no memory.
void reportError(std::string_view what, std::string_view reason);

/// Reports the error of a repeated operation once, and again only after the operation has
/// succeeded.
class RecurringError {
 public:
  /// `what` is what failed, as in `reportError`.
  explicit RecurringError(std::string_view what) : what_(what) {}

  /// Reports the failure of an attempt, unless the previous attempt failed too.
  template <typename Value>
  void update(const Result<Value>& result) {
    update(result ? nullptr : &result.failure());
  }

 private:
  void update(const Failure* failure);

  std::string_view what_;
  bool isReported_ = false;
};

}  // namespace lumowatt
