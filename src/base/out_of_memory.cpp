#include "base/out_of_memory.h"

#include <cstdlib>
#include <new>

#include "base/error_report.h"

namespace lumowatt {

namespace {

// GCOVR_EXCL_START: a test runs it, in a process that then ends at once and counts no lines
[[noreturn]] void end() {
  reportError("out of memory", "");
  std::_Exit(EXIT_FAILURE);
}
// GCOVR_EXCL_STOP

}  // namespace

void endWhenOutOfMemory() { std::set_new_handler(end); }

}  // namespace lumowatt
