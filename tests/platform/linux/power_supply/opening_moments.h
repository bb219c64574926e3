#pragma once

#include <functional>

/// The moments at which something can happen to a machine while it is read: the calls of openat, of
/// which, like of read, the program of these tests has its own.
namespace lumowatt {

/// Has something happen before the `count`th call from now on; 0 for no call. It may ask for
/// another.
void atOpening(int count, std::function<void()> event);

/// The calls so far.
int openings();

/// Whether every reading of a file fails, with ENODEV.
void refuseReading(bool refused);

}  // namespace lumowatt
