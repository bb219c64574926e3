#pragma once

#include <functional>

/// Hooks in the functions openat and read, which this test program overrides. The calls of openat
/// are the moments at which a test can change a machine during a reading.
namespace lumowatt {

/// Runs `event` once, before the `count`th call of openat from now on. A count of 0 cancels the
/// scheduled event. The event may schedule another event.
void onOpen(int count, std::function<void()> event);

/// Returns the number of calls of openat so far.
int openCount();

/// Sets whether every call of read fails with ENODEV.
void setReadsFail(bool isFailing);

}  // namespace lumowatt
