#include "telemetry/out_of_memory.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace lumowatt {

namespace {

[[noreturn]] void end() {
  std::fputs("lumowatt: out of memory\n", stderr);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

void endWhenOutOfMemory() { std::set_new_handler(end); }

}  // namespace lumowatt
