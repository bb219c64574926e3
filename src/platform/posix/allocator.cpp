#include "platform/posix/allocator.h"

#include <malloc.h>

namespace lumowatt {

void returnLargeBlocks([[maybe_unused]] int bytes) {
#ifdef M_MMAP_THRESHOLD
  ::mallopt(M_MMAP_THRESHOLD, bytes);
#endif
}

void useOneArena() {
#ifdef M_ARENA_MAX
  ::mallopt(M_ARENA_MAX, 1);
#endif
}

}  // namespace lumowatt
