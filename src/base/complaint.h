#pragma once

#include <string_view>

#include "base/failure.h"

namespace lumowatt {

/// Writes a line on the standard error: the program's name and the message. Allocates nothing.
void complain(std::string_view message);

/// The same, with the reason after what failed.
void complain(std::string_view what, const Failure& failure);

/// Reports something that may fail again and again: once, until it succeeds.
class Complaint {
 public:
  /// `what` says what a failure means to the user.
  explicit Complaint(std::string_view what) : what_(what) {}

  /// Reports a failure that follows a success, with its reason.
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
