#pragma once

/// Settings of the C library's allocator (mallopt(3)). They do nothing where it has none, as
/// musl's.
namespace lumowatt {

/// Has blocks of that many bytes and more returned to the system as soon as they are freed.
void returnLargeBlocks(int bytes);

/// Has all threads allocate from one arena; each arena reserves 64 MiB of addresses.
void useOneArena();

}  // namespace lumowatt
