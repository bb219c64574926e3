#include "base/out_of_memory.h"

#include <cstdlib>
#include <new>

#include "base/error_report.h"

namespace lumowatt {

namespace {

// GCOVR_EXCL_START: a death test covers it, but `_Exit` discards the coverage counters
[[noreturn]] void reportAndExit() {
  reportError("out of memory", "");
  std::_Exit(EXIT_FAILURE);
}
// GCOVR_EXCL_STOP

}  // namespace

void exitWhenOutOfMemory() { std::set_new_handler(reportAndExit); }

}  // namespace lumowatt
