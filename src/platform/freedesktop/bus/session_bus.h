#pragma once

#include "base/failure.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// The reason for a negative status of libsystemd.
Failure busFailure(int status);

/// Opens a connection to the session's bus, for the loop, and waits until the bus has accepted it.
Result<Bus> openSessionBus(sd_event* loop);

/// Whether messages pile up in this process because the bus does not take them.
bool isBehind(sd_bus* bus);

}  // namespace lumowatt::freedesktop
