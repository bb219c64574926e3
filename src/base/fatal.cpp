#include "base/fatal.h"

#include <cstdlib>

#include "base/complaint.h"

namespace lumowatt {

void fatal(std::string_view message) {
  complain(message);
  std::exit(EXIT_FAILURE);
}

}  // namespace lumowatt
