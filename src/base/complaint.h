#pragma once

#include <cstdio>

namespace lumowatt {

/// Something that may fail again and again, and is told of once until it goes well.
class Complaint {
 public:
  /// What it means to the user when it fails.
  explicit Complaint(const char* what) : what_(what) {}

  /// It went well (null), or failed for a reason, which is told on the standard error.
  void update(const char* failure) {
    if (failure != nullptr && !isTold_) std::fprintf(stderr, "lumowatt: %s: %s\n", what_, failure);
    isTold_ = failure != nullptr;
  }

 private:
  const char* what_;
  bool isTold_ = false;
};

}  // namespace lumowatt
