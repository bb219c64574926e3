#include "base/complaint.h"

#include <cstdio>
#include <string>

namespace lumowatt {

void complain(std::string_view message) {
  std::fprintf(stderr, "lumowatt: %.*s\n", static_cast<int>(message.size()), message.data());
}

void Complaint::update(const Result<>& result) {
  if (!result && !isReported_) complain(std::string(what_) + ": " + result.failure().reason);
  isReported_ = !result;
}

}  // namespace lumowatt
