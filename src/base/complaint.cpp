#include "base/complaint.h"

#include <cstdio>

namespace lumowatt {

void complain(std::string_view message) {
  std::fprintf(stderr, "lumowatt: %.*s\n", static_cast<int>(message.size()), message.data());
}

void complain(std::string_view what, const Failure& failure) {
  std::fprintf(stderr, "lumowatt: %.*s: %s\n", static_cast<int>(what.size()), what.data(),
               failure.reason.c_str());
}

void Complaint::update(const Failure* failure) {
  if (failure != nullptr && !isReported_) complain(what_, *failure);
  isReported_ = failure != nullptr;
}

}  // namespace lumowatt
