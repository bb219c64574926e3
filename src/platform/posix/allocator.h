#pragma once

/// Settings of the C library's allocator (mallopt(3)). They have no effect on allocators without
/// these settings, such as musl's.
namespace lumowatt {

/// Makes the allocator return blocks of at least `bytes` bytes to the system as soon as they are
/// freed.
void returnLargeBlocks(int bytes);

/// Makes all threads allocate from one arena, because each arena reserves 64 MiB of address space.
void useOneArena();

}  // namespace lumowatt
