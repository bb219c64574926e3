#include "base/out_of_memory.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace lumowatt {

namespace {

// GCOVR_EXCL_START: a test runs it, in a process that then ends at once and counts no lines
[[noreturn]] void end() {
  std::fputs("lumowatt: out of memory\n", stderr);
  std::_Exit(EXIT_FAILURE);
}
// GCOVR_EXCL_STOP

}  // namespace

void endWhenOutOfMemory() { std::set_new_handler(end); }

}  // namespace lumowatt
