#include "base/error_report.h"

#include <cstdio>

namespace lumowatt {

void reportError(std::string_view what, std::string_view reason) {
  std::fprintf(stderr, "lumowatt: %.*s%s%.*s\n", static_cast<int>(what.size()), what.data(),
               reason.empty() ? "" : ": ", static_cast<int>(reason.size()), reason.data());
}

void RecurringError::update(const Failure* failure) {
  if (failure != nullptr && !isReported_) reportError(what_, failure->reason);
  isReported_ = failure != nullptr;
}

}  // namespace lumowatt
