#include "base/fatal.h"

#include <cstdio>
#include <cstdlib>

namespace lumowatt {

void fatal(std::string_view message) {
  std::fprintf(stderr, "lumowatt: %.*s\n", static_cast<int>(message.size()), message.data());
  std::exit(EXIT_FAILURE);
}

}  // namespace lumowatt
