#pragma once

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Opens a connection to the session's bus, for the loop, and waits until the bus has taken it.
/// Negative when it does not, as libsystemd has its errors.
int openSessionBus(sd_event* loop, Bus& bus);

/// The reason of such an error.
const char* busFailure(int error);

/// Whether messages pile up in this process because the bus does not take them.
bool isBehind(sd_bus* bus);

}  // namespace lumowatt::freedesktop
