#include "base/fatal.h"

#include <cstdlib>

#include "base/error_report.h"

namespace lumowatt {

void fatal(std::string_view what, std::string_view reason) {
  reportError(what, reason);
  std::exit(EXIT_FAILURE);
}

}  // namespace lumowatt
